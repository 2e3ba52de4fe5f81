// The member lists of the interfaces against the platform's headers, the compiler's own slots and known
// numbers.
#include <algorithm>
#include <bit>
#include <fstream>
#include <gtest/gtest.h>
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

/// What stands between `before` and `after`, wherever both are in one line.
Names between(const std::string& text, const std::string& before, const std::string& after) {
  Names found;
  for (auto place = text.find(before); place != std::string::npos; place = text.find(before, place)) {
    place += before.size();
    const auto end = text.find(after, place);
    if (end < text.find('\n', place)) found.push_back(text.substr(place, end - place));
  }
  return found;
}

std::string firstWord(const std::string& text) {
  return text.substr(0, text.find(' '));
}
std::string lastWord(const std::string& text) {
  return text.substr(text.rfind(' ') + 1);
}

/// A class of the headers, up to its end; empty when it is only announced there.
std::string declaration(const std::string& headers, const std::string& name) {
  const auto begin = headers.find("\nclass " + name + " ");
  return begin == std::string::npos ? std::string()
                                    : headers.substr(begin, headers.find("\n};", begin) - begin);
}

/// What a class of the headers declares itself, in declared order.
Names declaredMembers(const std::string& headers, const std::string& interface) {
  Names members;
  for (const std::string& member : between(declaration(headers, interface), "virtual ", "(")) {
    members.push_back(lastWord(member));
  }
  return members;
}

Names declaredInterfaces(const std::string& headers) {
  Names interfaces;
  for (const std::string& rest : between(headers, "\nclass ", "{")) {
    const std::string name = firstWord(rest);
    if (declaration(headers, name).find("static constexpr IID kIid") != std::string::npos)
      interfaces.push_back(name);
  }
  return interfaces;
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
  Names declared = declaredInterfaces(allPlatformHeaders());
  ASSERT_GT(declared.size(), 20u);
  std::ranges::sort(listed);
  std::ranges::sort(declared);
  EXPECT_EQ(listed, declared);
}

TEST(FunctionTable, holdsEveryFunctionOfTheHeaders) {
  const Names declared = between(allPlatformHeaders(), "CE_CALL(", ")");
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
