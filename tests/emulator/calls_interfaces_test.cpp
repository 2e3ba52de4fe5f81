// The member lists of the interfaces against the platform's headers, the compiler's own slots and known
// numbers.
#include <algorithm>
#include <bit>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "emulator/calls/functions.h"
#include "emulator/calls/interfaces.h"
#include "emulator/calls/known_calls.h"

namespace emulator {
namespace {

using Names = std::vector<std::string>;

std::string platformHeader(const std::string& name) {
  std::ifstream file(QORV_PLATFORM_HEADERS "/" + name);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string allPlatformHeaders() {
  std::string text;
  for (const char* name : {"appointment.h", "com.h", "contact.h", "files.h", "item.h", "messaging.h",
                           "outlook.h", "property_database.h", "rapi_stream.h", "recurrence.h", "registry.h",
                           "sockets.h", "system.h", "task.h", "text.h", "time.h", "windows.h"}) {
    text += platformHeader(name);
  }
  return text;
}

/// The first group of every match.
Names matches(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  Names found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
    found.push_back((*match)[1]);
  }
  return found;
}

/// What a class of the headers declares itself, in declared order.
Names declaredMembers(const std::string& headers, const std::string& interface) {
  const auto begin = headers.find("\nclass " + interface + " ");
  EXPECT_NE(begin, std::string::npos) << interface;
  const auto end = headers.find("\n};", begin);
  return matches(headers.substr(begin, end - begin), R"(virtual \w+ (\w+)\()");
}

template <typename... Calls>
Names namesOf(CallList<Calls...>) {
  return {std::string(Calls::kName)...};
}

template <typename Visitor, typename... T>
void forEachInterface(TypeList<T...>, Visitor visit) {
  (visit.template operator()<T>(), ...);
}

TEST(InterfaceTables, listWhatTheHeadersDeclareInTheirOrder) {
  const std::string headers = allPlatformHeaders();
  forEachInterface(Interfaces{}, [&]<typename T>() {
    const std::string name(kTypeName<T>);
    EXPECT_EQ(namesOf(typename Interface<T>::Members{}), declaredMembers(headers, name)) << name;
  });
}

TEST(InterfaceTables, holdEveryInterfaceOfTheHeaders) {
  Names listed;
  forEachInterface(Interfaces{}, [&]<typename T>() { listed.emplace_back(kTypeName<T>); });
  Names declared =
      matches(allPlatformHeaders(), R"(class (\w+)(?: : public \w+)? \{\n public:\n  static constexpr IID)");
  std::ranges::sort(listed);
  std::ranges::sort(declared);
  EXPECT_EQ(listed, declared);
}

TEST(FunctionTable, holdsEveryFunctionOfTheHeaders) {
  const Names declared = matches(allPlatformHeaders(), R"(CE_CALL\((\w+)\))");
  ASSERT_GT(declared.size(), 60u);
  for (const std::string& name : declared) EXPECT_TRUE(isPlatformCall(name)) << name;
  constexpr std::size_t kEntries = EntryFunctions::kSize;
  EXPECT_EQ(Functions::kSize, declared.size() + kEntries);
}

/// The slot that a compiler of this ABI stores in a pointer to a virtual member: 1 + its offset in the
/// vtable.
template <typename Member>
std::size_t compilersSlot(Member member) {
  struct Representation {
    std::uintptr_t oddOffset;
    std::ptrdiff_t adjustment;
  };
  return (std::bit_cast<Representation>(member).oddOffset - 1) / sizeof(void*);
}

template <typename... Calls>
void expectSlots(CallList<Calls...>, std::string_view interface) {
  std::size_t slot = 0;
  const auto expectNext = [&](auto member, std::string_view name) {
    EXPECT_EQ(compilersSlot(member), slot++) << interface << "." << name;
  };
  (expectNext(Calls::kCallee, Calls::kName), ...);
}

TEST(InterfaceTables, placeEveryMemberInItsSlot) {
  forEachInterface(Interfaces{}, []<typename T>() { expectSlots(AllMembers<T>{}, kTypeName<T>); });
}

template <typename T>
std::size_t slotOf(std::string_view member) {
  const Names names = namesOf(AllMembers<T>{});
  return static_cast<std::size_t>(std::ranges::find(names, member) - names.begin());
}

// Numbers of the platform's published declarations.
TEST(InterfaceTables, agreeWithThePlatformsPublishedSlots) {
  EXPECT_EQ(slotOf<IAppointment>("put_Start"), 29u);
  EXPECT_EQ(slotOf<IAppointment>("Save"), 40u);
  EXPECT_EQ(slotOf<IAppointment>("get_Application"), 49u);
  EXPECT_EQ(slotOf<ITask>("Save"), 37u);
  EXPECT_EQ(slotOf<IContact>("get_Birthday"), 7u);
  EXPECT_EQ(slotOf<IContact>("put_Birthday"), 57u);
  EXPECT_EQ(slotOf<IContact>("Save"), 107u);
  EXPECT_EQ(slotOf<IRecurrencePattern>("GetOccurrence"), 35u);
  EXPECT_EQ(slotOf<IExceptions>("Item"), 7u);
  EXPECT_EQ(slotOf<IException>("get_Deleted"), 9u);
  EXPECT_EQ(slotOf<IItem>("OpenProperty"), 11u);
  EXPECT_EQ(slotOf<IItem>("GetProps"), 3u);
  EXPECT_EQ(slotOf<IPOutlookApp>("GetItemFromOid"), 12u);
  EXPECT_EQ(slotOf<IPOutlookApp>("SystemTimeToVariantTime"), 26u);
  EXPECT_EQ(slotOf<IFolder>("get_Items"), 7u);
  EXPECT_EQ(slotOf<IPOutlookItemCollection>("Remove"), 12u);
  EXPECT_EQ(slotOf<IRAPIStream>("Read"), 3u);
  EXPECT_EQ(slotOf<IRAPIStream>("GetRapiStat"), 15u);
  EXPECT_EQ(slotOf<IMAPITable>("QueryRows"), 19u);
  EXPECT_EQ(slotOf<IMAPITable>("WaitForCompletion"), 23u);
  EXPECT_EQ(slotOf<IMsgStore>("OpenEntry"), 17u);
  EXPECT_EQ(slotOf<IMAPIFolder>("DeleteMessages"), 21u);
  EXPECT_EQ(slotOf<IMessage>("ModifyRecipients"), 19u);
  EXPECT_EQ(slotOf<IMAPISession>("Logoff"), 17u);
}

TEST(KnownCalls, areFunctionsEntriesAndMembersUnderEachInterfaceThatHasThem) {
  EXPECT_TRUE(isPlatformCall("CreateFileW"));
  EXPECT_TRUE(isPlatformCall("wcstol"));
  EXPECT_TRUE(isPlatformCall("socket"));
  EXPECT_TRUE(isPlatformCall("DllRegisterServer"));
  EXPECT_TRUE(isPlatformCall("IAppointment.QueryInterface"));
  EXPECT_TRUE(isPlatformCall("IMsgStore.GetProps"));
  EXPECT_TRUE(isPlatformCall("IRAPIStream.Read"));
}

TEST(KnownCalls, areNothingElse) {
  for (const char* name :
       {"", ".", "CreateFile", "ce_CreateFileW", "createfilew", "IAppointment", "IAppointment.",
        "IAppointment.Sav", "IAppointment.OpenProperty", "Save", "IRecipients.Count"}) {
    EXPECT_FALSE(isPlatformCall(name)) << name;
  }
}

}  // namespace
}  // namespace emulator
