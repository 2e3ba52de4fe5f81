// Contacts and tasks with every platform call of their paths failing: each call once, and each from then on.
#include <gtest/gtest.h>
#include <map>

#include "tests/pim/item_test.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

constexpr DWORD kOid = 17;

struct Kind {
  unsigned type;
  std::string section;
  std::string interface;
  Bytes record;     ///< of everything that the type can carry
  unsigned fields;  ///< that the device sends of it
};

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.section;
}

Kind contacts() {
  return {kContact, "contacts", "IContact.",
          recordOf({timeField(1, 9), timeField(2, 9), textField(31, u"Ann"), textField(33, u"Lee"),
                    textField(50, std::u16string(4096, u'b'))}),
          49};
}

Kind tasks() {
  const Bytes weekly =
      block(day(2005, 3, 14), day(2005, 6, 30), {.type = 1, .endKind = 1, .dayOfWeekMask = 2});
  return {kTask, "tasks", "ITask.",
          recordOf({textField(1, u"File"), textField(2, u"Work"), timeField(3, 9), timeField(4, 0, 0, 16),
                    numberField(5, 2), numberField(6, 1), numberField(7, 1), numberField(9, 1),
                    timeField(10, 9, 0, 15), Bytes().u32(19).append(weekly),
                    textField(11, std::u16string(4096, u'b'))}),
          11};
}

/// One call of a path.
struct FailedCall {
  std::string name;
  int number;  ///< among the calls of that name

  [[nodiscard]] bool is(const std::string& other, int n = 1) const { return name == other && number == n; }
  [[nodiscard]] std::string rule(const char* count) const {
    return name + "#" + std::to_string(number) + "=0x80004005" + count;
  }
};

class ItemFaults : public ItemTest, public testing::WithParamInterface<Kind> {
 protected:
  ItemFaults() : ItemTest(GetParam().type, GetParam().section) {}

  static std::string call(const char* method) { return GetParam().interface + method; }

  /// The calls that a request makes between log-on and log-off. Calls that give something back are left out: one that
  /// does nothing must leak.
  std::vector<FailedCall> callsOfRequest(const Bytes& request) {
    observeCalls();
    reply(request);
    std::map<std::string, int> numbers;
    std::vector<FailedCall> found;
    for (const std::string& name : callsOf({call(""), "IRecurrencePattern.", "IItem.", "IStream.",
                                            "IPOutlookApp.", "WideCharToMultiByte", "GetProcessHeap"})) {
      const bool isSession = name == "IPOutlookApp.Logon" || name == "IPOutlookApp.Logoff";
      const bool givesBack = name.ends_with(".Release") || name == "IPOutlookApp.SysFreeString";
      if (!isSession && !givesBack) found.push_back({name, ++numbers[name]});
    }
    return found;
  }

  /// The item that a request changes or reads; what a change put into it stays.
  void arrange() { load({{"Oid", kOid}, {"Body", "old"}}); }

  /// For every call of the request's path: arranges the item, makes the call fail, once and from then on, and checks the
  /// answer, that the session goes on and that nothing is left behind.
  template <typename Check>
  void eachCallFails(const Bytes& request, Check check) {
    arrange();
    const auto path = callsOfRequest(request);
    EXPECT_GT(path.size(), 10u);
    for (const FailedCall& failed : path) {
      for (const char* count : {"*1", ""}) {
        SCOPED_TRACE(failed.rule(count));
        arrange();
        clearFaults();
        fault(failed.rule(count));
        const auto replies = session({request, command(20)});
        ASSERT_EQ(replies.size(), 2u);
        check(failed, replies[0]);
        EXPECT_EQ(replies[1].size(), 4u) << "the session goes on";
        EXPECT_EQ(device().objectModel.liveObjects().total(), 0u);
        EXPECT_EQ(device().objectModel.memory().liveTexts(), 0u);
        EXPECT_EQ(device().objectModel.memory().liveBlocks(), 0u);
      }
    }
  }

  /// Whether the item could not be had at all.
  static bool isRefusal(const FailedCall& failed) {
    return failed.is("IPOutlookApp.CreateItem") || failed.is(call("QueryInterface"));
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, ItemFaults, testing::Values(contacts(), tasks()),
                         [](const auto& kind) { return kind.param.section; });

TEST_P(ItemFaults, ofAnAdditionAreAnsweredAsTheyMatter) {
  eachCallFails(command(2).u32(7).append(GetParam().record),
                [](const FailedCall& failed, const Bytes& answer) {
                  ASSERT_EQ(answer.size(), 20u);
                  if (isRefusal(failed)) {
                    EXPECT_EQ(answer.slice(0, 10), hex("00 03 00000000 00000000"));
                  } else if (failed.is(call("Save"))) {
                    EXPECT_EQ(answer.slice(0, 10), hex("00 00 00000000 07000000"));
                  } else {
                    EXPECT_EQ(answer.slice(0, 2), hex("01 00"));
                    EXPECT_EQ(answer.dwordAt(2) == 0, failed.is(call("get_Oid")));
                    EXPECT_EQ(answer.dwordAt(6), 7u);
                  }
                });
}

TEST_P(ItemFaults, ofAChangeAreAnsweredAsTheyMatter) {
  eachCallFails(command(3).u32(kOid).append(GetParam().record),
                [this](const FailedCall& failed, const Bytes& answer) {
                  ASSERT_EQ(answer.size(), 20u);
                  if (isRefusal(failed) || failed.is("IPOutlookApp.GetItemFromOid")) {
                    EXPECT_EQ(answer.slice(0, 10), hex("00 03 00000000 00000000"));
                    EXPECT_EQ(stored(kOid)["Body"], "old");
                  } else if (failed.is(call("Save"))) {
                    EXPECT_EQ(answer.slice(0, 10), hex("00 00 11000000 11000000"));
                    EXPECT_EQ(stored(kOid)["Body"], "old");
                  } else {
                    const DWORD oid = failed.is(call("get_Oid")) ? 0 : kOid;
                    EXPECT_EQ(answer.slice(0, 10), Bytes().u8(1).u8(0).u32(oid).u32(kOid));
                  }
                });
}

TEST_P(ItemFaults, ofAReadLeaveTheRecordWithAllFieldsThatCanBeTold) {
  arrange();
  ASSERT_EQ(changeReply(kOid, GetParam().record).vector()[0], 1);
  eachCallFails(command(7).u32(kOid), [](const FailedCall& failed, const Bytes& answer) {
    if (isRefusal(failed) || failed.is("IPOutlookApp.GetItemFromOid")) {
      EXPECT_EQ(answer, hex("00 03"));
      return;
    }
    const bool hasNoPattern = failed.is("ITask.get_IsRecurring") || failed.is("ITask.GetRecurrencePattern");
    const DWORD oid = failed.is(call("get_Oid")) ? 0 : kOid;
    EXPECT_EQ(answer.slice(0, 7),
              Bytes().u8(1).u8(0).u32(oid).u8(GetParam().fields - (hasNoPattern ? 1 : 0)));
  });
}

TEST_P(ItemFaults, ofAListLeaveItsCountRight) {
  arrange();
  ASSERT_EQ(changeReply(kOid, GetParam().record).vector()[0], 1);
  eachCallFails(command(16).u32(1).u32(kOid), [](const FailedCall& failed, const Bytes& answer) {
    const bool isMissing = isRefusal(failed) || failed.is("IPOutlookApp.GetItemFromOid");
    EXPECT_EQ(answer.slice(0, 6), Bytes().u8(1).u8(0).u32(isMissing ? 0 : 1));
  });
}

}  // namespace
}  // namespace qorv
