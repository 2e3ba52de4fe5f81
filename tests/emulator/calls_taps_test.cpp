// Taps: they stand for their objects in every slot, keep identity, and end with their objects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/emulator/calls_monitor_fixture.h"
#include "tests/emulator/calls_scripted_object.h"

namespace emulator {
namespace {

using ::testing::ElementsAre;
using testing::RawArguments;
using testing::ScriptedObject;

/// Room for anything that a parameter may point to, all zero: an empty text, a null object, no elements.
struct Zeros {
  alignas(16) std::array<std::byte, 1024> bytes{};
};

using TapTest = testing::MonitorTest;

// Every member of every interface: the call arrives in its own slot, with its own arguments, and its result
// comes back.
template <typename T>
class EverySlot : public ::testing::Test {
 protected:
  // Without a log nobody looks behind the arguments, which are no sensible ones.
  CallMonitor monitor_{std::nullopt, Faults({}), [](DWORD) {}};
};

struct InterfaceNames {
  template <typename T>
  static std::string GetName(int) {
    return std::string(kTypeName<T>);
  }
};
using AllInterfaces =
    ::testing::Types<IUnknown, IDispatch, ISequentialStream, IStream, IRAPIStream, IContact, IAppointment,
                     ITask, IRecurrencePattern, IException, IExceptions, IPOutlookApp, IFolder,
                     IPOutlookItemCollection, IItem, IMAPIProp, IMsgStore, IMAPIContainer, IMAPIFolder,
                     IMessage, IAttach, IMAPITable, IMAPISession>;
TYPED_TEST_SUITE(EverySlot, AllInterfaces, InterfaceNames);

template <typename... Calls>
std::vector<std::size_t> arities(CallList<Calls...>) {
  return {Calls::kArity...};
}

TYPED_TEST(EverySlot, reachesTheObjectWithItsArguments) {
  std::size_t reached = 0;
  RawArguments received{};
  ScriptedObject<TypeParam> object([&](std::size_t slot, const RawArguments& arguments) {
    reached = slot;
    received = arguments;
    return 0x1234u + slot;
  });
  TypeParam* const tap = this->monitor_.tapped(object.get());
  std::array<Zeros, testing::kMostArguments> zeros;
  RawArguments sent;
  for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = reinterpret_cast<std::uintptr_t>(&zeros[i]);

  const std::vector<std::size_t> counts = arities(AllMembers<TypeParam>{});
  for (std::size_t slot = 0; slot < counts.size(); ++slot) {
    const std::uint64_t result = testing::callSlot(tap, slot, sent);
    ASSERT_EQ(reached, slot);
    ASSERT_EQ(static_cast<std::uint32_t>(result), 0x1234u + slot);
    for (std::size_t i = 0; i < counts[slot]; ++i) {
      ASSERT_EQ(static_cast<std::uint16_t>(received[i]), static_cast<std::uint16_t>(sent[i]))
          << slot << ", " << i;
    }
  }
}

constexpr std::size_t kQueryInterface = 0;
constexpr std::size_t kRelease = 2;

/// An object that lives until its references are released, and hands out `interfaces` when asked.
template <typename T>
class Counted {
 public:
  Counted() : object_([this](std::size_t slot, const RawArguments& a) { return answer(slot, a); }) {}

  T* get() { return object_.get(); }
  std::map<std::size_t, std::function<HRESULT(const RawArguments&)>> script;
  ULONG references = 1;

 private:
  std::uint64_t answer(std::size_t slot, const RawArguments& arguments) {
    if (slot == 1) return ++references;
    if (slot == kRelease) return --references;
    const auto found = script.find(slot);
    return static_cast<std::uint64_t>(found == script.end() ? S_OK : found->second(arguments));
  }

  ScriptedObject<T> object_;
};

TEST_F(TapTest, logsMembersUnderTheObjectsOwnInterface) {
  Counted<IAppointment> object;
  IAppointment* const tap = monitor_.tapped(object.get());
  tap->put_Start(38425.5);
  tap->put_ReminderSet(VARIANT_TRUE);
  WCHAR text[] = u"Standup";
  tap->put_Subject(text);
  BSTR subject = nullptr;
  tap->get_Subject(&subject);
  tap->AddRef();
  tap->GetTypeInfoCount(nullptr);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "IAppointment.put_Start", "args": [38425.5], "result": 0})",
                                 R"({"call": "IAppointment.put_ReminderSet", "args": [-1], "result": 0})",
                                 R"({"call": "IAppointment.put_Subject", "args": ["Standup"], "result": 0})",
                                 R"({"call": "IAppointment.get_Subject", "args": [], "result": 0})",
                                 R"({"call": "IAppointment.AddRef", "args": [], "result": 2})",
                                 R"({"call": "IAppointment.GetTypeInfoCount", "args": [], "result": 0})"));
}

TEST_F(TapTest, standForWhatACallHandsOut) {
  Counted<IAppointment> appointment;
  Counted<IException> exception;
  exception.script[7] = [&](const RawArguments& a) {
    testing::behind<IAppointment*>(a[0]) = appointment.get();
    return S_OK;
  };
  IException* const tap = monitor_.tapped(exception.get());
  IAppointment* first = nullptr;
  IAppointment* second = nullptr;
  ASSERT_EQ(tap->get_AppointmentItem(&first), S_OK);
  ASSERT_EQ(tap->get_AppointmentItem(&second), S_OK);
  EXPECT_NE(first, appointment.get());
  EXPECT_EQ(first, second);
  first->Save();
  EXPECT_EQ(log().back(), R"({"call": "IAppointment.Save", "args": [], "result": 0})");
}

TEST_F(TapTest, findTheInterfaceBehindADispatch) {
  Counted<ITask> task;
  Counted<IPOutlookApp> application;
  application.script[11] = [&](const RawArguments& a) {
    testing::behind<IDispatch*>(a[1]) = task.get();
    return S_OK;
  };
  IPOutlookApp* const tap = monitor_.tapped(application.get());
  IDispatch* item = nullptr;
  ASSERT_EQ(tap->CreateItem(olTaskItem, &item), S_OK);
  static_cast<ITask*>(item)->put_Importance(2);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "IPOutlookApp.CreateItem", "args": [3], "result": 0})",
                                 R"({"call": "ITask.put_Importance", "args": [2], "result": 0})"));
}

TEST_F(TapTest, standForTheInterfaceThatWasAskedFor) {
  Counted<IItem> item;
  Counted<IAppointment> appointment;
  appointment.script[kQueryInterface] = [&](const RawArguments& a) {
    testing::behind<IItem*>(a[1]) = item.get();
    return S_OK;
  };
  void* found = nullptr;
  ASSERT_EQ(monitor_.tapped(appointment.get())->QueryInterface(IItem::kIid, &found), S_OK);
  static_cast<IItem*>(found)->Save();
  EXPECT_THAT(log(), ElementsAre(R"({"call": "IAppointment.QueryInterface", "args":)"
                                 R"( ["{FB8998D0-38F0-4D12-AC56-4EC8FCE9F3D5}"], "result": 0})",
                                 R"({"call": "IItem.Save", "args": [], "result": 0})"));
}

TEST_F(TapTest, leaveAloneWhatAFailedCallLeft) {
  Counted<IException> exception;
  exception.script[7] = [](const RawArguments&) { return E_FAIL; };
  auto* const poison = reinterpret_cast<IAppointment*>(std::uintptr_t{0xDEAD});
  IAppointment* item = poison;
  EXPECT_EQ(monitor_.tapped(exception.get())->get_AppointmentItem(&item), E_FAIL);
  EXPECT_EQ(item, poison);
}

TEST_F(TapTest, areTakenOffOnTheWayIn) {
  Counted<IDispatch> item;
  Counted<IFolder> folder;
  IDispatch* received = nullptr;
  folder.script[10] = [&](const RawArguments& a) {
    received = reinterpret_cast<IDispatch*>(a[1]);
    return S_OK;
  };
  IFolder* const tap = monitor_.tapped(folder.get());
  tap->AddItemToInfraredFolder(olContactItem, monitor_.tapped(item.get()));
  EXPECT_EQ(received, item.get());
  tap->AddItemToInfraredFolder(olContactItem, nullptr);
  EXPECT_EQ(received, nullptr);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "IFolder.AddItemToInfraredFolder", "args": [2, "@IDispatch#1"], "result": 0})",
                  R"({"call": "IFolder.AddItemToInfraredFolder", "args": [2, null], "result": 0})"));
}

TEST_F(TapTest, endWithTheLastReferenceOfTheirObject) {
  Counted<ITask> task;
  ITask* const tap = monitor_.tapped(task.get());
  tap->AddRef();
  EXPECT_EQ(tap->Release(), 1u);
  EXPECT_EQ(monitor_.tapped(task.get()), tap);
  EXPECT_EQ(tap->Release(), 0u);
  EXPECT_EQ(monitor_.untapped(tap), tap);  // no tap any more: a pointer like any other
}

TEST_F(TapTest, giveALaterObjectAtTheSameAddressItsOwnName) {
  Counted<ITask> task;
  Counted<IFolder> folder;
  IFolder* const folderTap = monitor_.tapped(folder.get());
  monitor_.tapped(task.get())->Release();
  task.references = 1;
  folderTap->AddItemToInfraredFolder(olTaskItem, monitor_.tapped(task.get()));
  EXPECT_EQ(log().back(),
            R"({"call": "IFolder.AddItemToInfraredFolder", "args": [3, "@ITask#2"], "result": 0})");
}

TEST_F(TapTest, handOutNullForNull) {
  EXPECT_EQ(monitor_.tapped(static_cast<ITask*>(nullptr)), nullptr);
}

TEST_F(TapTest, logWhatMessagingTakes) {
  Counted<IMAPIProp> properties;
  IMAPIProp* const tap = monitor_.tapped(properties.get());
  WCHAR text[] = u"Hi";
  BYTE id[20] = {};
  SPropValue values[4] = {};
  values[0].ulPropTag = PR_SUBJECT_W;
  values[0].Value.lpszW = text;
  values[1].ulPropTag = PR_MESSAGE_FLAGS;
  values[1].Value.l = -1;
  values[2].ulPropTag = PR_ENTRYID;
  values[2].Value.bin = {20, id};
  values[3].ulPropTag = PR_MESSAGE_DELIVERY_TIME;
  tap->SetProps(4, values, nullptr);
  SPropTagArray tags{1, {PR_ENTRYID}};
  ULONG count = 0;
  SPropValue* result = nullptr;
  tap->GetProps(&tags, 0, &count, &result);
  GUID set = PS_MAPI;
  MAPINAMEID name{&set, MNID_STRING, {}};
  name.Kind.lpwstrName = text;
  MAPINAMEID* names[] = {&name};
  SPropTagArray* found = nullptr;
  tap->GetIDsFromNames(1, names, MAPI_CREATE, &found);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "IMAPIProp.SetProps", "args": [4, [{"ulPropTag": 3604511, "Value": "Hi"},)"
                  R"( {"ulPropTag": 235339779, "Value": -1}, {"ulPropTag": 268370178, "Value":)"
                  R"( {"bytes": 20}}, {"ulPropTag": 235274304, "Value": "1601-01-01T00:00:00.0000000Z"}]],)"
                  R"( "result": 0})",
                  R"({"call": "IMAPIProp.GetProps", "args": [{"cValues": 1, "aulPropTag": [268370178]},)"
                  R"( 0], "result": 0})",
                  R"({"call": "IMAPIProp.GetIDsFromNames", "args": [1, [{"lpguid":)"
                  R"( "{00020328-0000-0000-C000-000000000046}", "ulKind": 1, "Kind": "Hi"}], 2],)"
                  R"( "result": 0})"));
}

TEST_F(TapTest, logListsOfEntriesAndRecipients) {
  Counted<IMAPIFolder> folder;
  Counted<IMessage> message;
  BYTE id[20] = {};
  SBinary entries[2] = {{20, id}, {0, nullptr}};
  ENTRYLIST list{2, entries};
  monitor_.tapped(folder.get())->DeleteMessages(&list, 0, nullptr, 0);
  SPropValue type{PR_RECIPIENT_TYPE, 0, {MAPI_TO}};
  ADRLIST recipients{1, {{0, 1, &type}}};
  monitor_.tapped(message.get())->ModifyRecipients(MODRECIP_ADD, &recipients);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "IMAPIFolder.DeleteMessages", "args": [{"cValues": 2, "lpbin":)"
                          R"( [{"bytes": 20}, null]}, 0, null, 0], "result": 0})",
                          R"({"call": "IMessage.ModifyRecipients", "args": [2, {"cEntries": 1, "aEntries":)"
                          R"( [{"cValues": 1, "rgPropVals": [{"ulPropTag": 202702851, "Value": 1}]}]}],)"
                          R"( "result": 0})"));
}

/// Two interfaces of one object, with one count of references, as the object model's items have them.
class TwoSided final : public IException, public IItem {
 public:
  explicit TwoSided(bool& gone) : gone_(gone) {}
  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (iid == IItem::kIid) {
      *object = static_cast<IItem*>(this);
    } else {
      *object = static_cast<IException*>(this);
    }
    ++references_;
    return S_OK;
  }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      gone_ = true;
      delete this;
    }
    return left;
  }

  HRESULT GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(REFIID, LPWSTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT get_AppointmentItem(IAppointment**) override { return E_FAIL; }
  HRESULT get_OriginalDate(DATE*) override { return S_OK; }
  HRESULT get_Deleted(VARIANT_BOOL*) override { return S_OK; }
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }
  HRESULT GetProps(const CEPROPID*, ULONG, WORD, CEPROPVAL**, ULONG*, HANDLE) override { return S_OK; }
  HRESULT SetProps(ULONG, WORD, CEPROPVAL*) override { return S_OK; }
  HRESULT Save() override { return S_OK; }
  HRESULT Delete() override { return S_OK; }
  HRESULT Display(HWND) override { return S_OK; }
  HRESULT Edit(HWND) override { return S_OK; }
  HRESULT Copy(IItem**) override { return S_OK; }
  HRESULT get_Oid(LONG*) override { return S_OK; }
  HRESULT OpenProperty(CEPROPID, DWORD, IStream**) override { return S_OK; }
  HRESULT get_DefaultItemType(int*) override { return S_OK; }
  HRESULT get_Parent(IFolder**) override { return S_OK; }
  HRESULT AddCategory(LPCWSTR) override { return S_OK; }
  HRESULT RemoveCategory(LPCWSTR) override { return S_OK; }

 private:
  ~TwoSided() = default;
  bool& gone_;
  ULONG references_ = 1;
};

TEST_F(TapTest, ofBothInterfacesOfAnObjectEndWithIt) {
  bool gone = false;
  IException* const exception = monitor_.tapped(static_cast<IException*>(new TwoSided(gone)));
  void* found = nullptr;
  ASSERT_EQ(exception->QueryInterface(IItem::kIid, &found), S_OK);
  auto* const item = static_cast<IItem*>(found);
  EXPECT_EQ(exception->Release(), 1u);
  EXPECT_EQ(item->Save(), S_OK);
  EXPECT_EQ(exception->get_Deleted(nullptr), S_OK);  // the object lives, so its other tap does too
  EXPECT_EQ(item->Release(), 0u);
  EXPECT_TRUE(gone);
  EXPECT_EQ(monitor_.untapped(exception), exception);
  EXPECT_EQ(monitor_.untapped(item), item);
}

TEST_F(TapTest, keepTheIdentityOfAnObject) {
  bool gone = false;
  IException* const exception = monitor_.tapped(static_cast<IException*>(new TwoSided(gone)));
  void* identity = nullptr;
  ASSERT_EQ(exception->QueryInterface(IUnknown::kIid, &identity), S_OK);
  EXPECT_EQ(identity, exception);
  exception->Release();
  exception->Release();
  EXPECT_TRUE(gone);
}

class FaultedMembers : public TapTest {
 protected:
  FaultedMembers() : MonitorTest({"IException.get_AppointmentItem=0x80040067", "ITask.Release#1=6*1"}) {}
};

TEST_F(FaultedMembers, returnTheCodeAndNoObject) {
  Counted<IException> exception;
  exception.script[7] = [](const RawArguments&) {
    ADD_FAILURE() << "the call was made";
    return S_OK;
  };
  auto* item = reinterpret_cast<IAppointment*>(std::uintptr_t{0xDEAD});
  EXPECT_EQ(monitor_.tapped(exception.get())->get_AppointmentItem(&item), E_INVALIDREMINDERTIME);
  EXPECT_EQ(item, nullptr);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "IException.get_AppointmentItem", "args": [], "result": 2147745895})"));
}

TEST_F(FaultedMembers, thatReleaseNothingKeepTheTap) {
  Counted<ITask> task;
  ITask* const tap = monitor_.tapped(task.get());
  EXPECT_EQ(tap->Release(), 0u);
  EXPECT_EQ(lastError_, 6u);
  EXPECT_EQ(task.references, 1u);
  EXPECT_EQ(monitor_.untapped(tap), task.get());
  EXPECT_EQ(tap->Release(), 0u);
  EXPECT_EQ(task.references, 0u);
}

TEST(TapsWithoutALog, applyFaultsAllTheSame) {
  CallMonitor monitor(std::nullopt, Faults({parseFaultRule("ITask.Save#2=0x80004005")}), [](DWORD) {});
  Counted<ITask> task;
  ITask* const tap = monitor.tapped(task.get());
  EXPECT_EQ(tap->Save(), S_OK);
  EXPECT_EQ(tap->Save(), E_FAIL);
}

}  // namespace
}  // namespace emulator
