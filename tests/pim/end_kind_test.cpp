#include "pim/end_kind.h"

#include <gtest/gtest.h>

#include "emulator/seam/current_device.h"
#include "pim/recurrence.h"
#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

/// A stored recurrence as far as it is read: pattern and calendar type at 6, the end type at `offset`.
std::vector<BYTE> blob(DWORD patternType, std::size_t offset, DWORD endType) {
  return Bytes().zeros(6).u32(patternType).zeros(offset - 10).u32(endType).vector();
}

struct StoredEnd {
  DWORD patternType;
  std::size_t offset;
  DWORD endType;
  EndKind kind;
};

class StoredEndKind : public testing::TestWithParam<StoredEnd> {};

TEST_P(StoredEndKind, standsBehindThePatternsOwnData) {
  const auto& [patternType, offset, endType, kind] = GetParam();
  EXPECT_EQ(storedEndKind(blob(patternType, offset, endType)), kind);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, StoredEndKind,
    testing::Values(
        StoredEnd{0, 22, 0x2021, EndKind::OnDate}, StoredEnd{0, 22, 0x2022, EndKind::AfterOccurrences},
        StoredEnd{0, 22, 0x2023, EndKind::Never}, StoredEnd{0, 22, 0, EndKind::Never},
        StoredEnd{1, 26, 0x2021, EndKind::OnDate}, StoredEnd{1, 26, 0x2022, EndKind::AfterOccurrences},
        StoredEnd{2, 26, 0x2021, EndKind::OnDate}, StoredEnd{2, 26, 0xFFFFFFFF, EndKind::Never},
        StoredEnd{3, 30, 0x2021, EndKind::OnDate}, StoredEnd{3, 30, 0x2022, EndKind::AfterOccurrences},
        // Month ends and other calendars have their own data where a day's end type is: never an end.
        StoredEnd{4, 22, 31, EndKind::Never}, StoredEnd{0x00010001, 22, 2, EndKind::Never},
        StoredEnd{0x0B, 22, 0x2021, EndKind::OnDate}));

TEST(StoredEndKind, isUnknownInABlobThatEndsBeforeIt) {
  const std::vector<BYTE> whole = blob(3, 30, 0x2021);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(storedEndKind(std::span(whole).first(size))) << size;
  }
}

class EndKindCorrection : public AgentTest {
 protected:
  /// A weekly series that ends on a date.
  DWORD addSeries() {
    const Bytes weekly =
        block(day(2005, 3, 14), day(2005, 6, 30), {.type = 1, .endKind = 1, .dayOfWeekMask = 2});
    return reply(request(2, kAppointment)
                     .u32(1)
                     .append(record(2).append(timeField(16, 9)).append(Bytes().u32(19).append(weekly))))
        .dwordAt(2);
  }

  RecurrenceBlock block_;
};

TEST_F(EndKindCorrection, takesTheStoredEnd) {
  const DWORD oid = addSeries();
  const emulator::CurrentDevice current(device());
  block_.setEndKind(EndKind::AfterOccurrences);
  EXPECT_TRUE(correctEndKind(outlook(), oid, kAppointmentRecurrenceProperty, block_));
  EXPECT_EQ(block_.endKind(), EndKind::OnDate);
}

TEST_F(EndKindCorrection, anAbsentPropertyCountsAsEndingAfterOccurrences) {
  const DWORD oid = addSeries();
  const emulator::CurrentDevice current(device());
  block_.setEndKind(EndKind::OnDate);
  // An appointment has no task's recurrence.
  EXPECT_TRUE(correctEndKind(outlook(), oid, kTaskRecurrenceProperty, block_));
  EXPECT_EQ(block_.endKind(), EndKind::AfterOccurrences);
}

TEST_F(EndKindCorrection, anItemThatIsGoneLeavesTheEndKind) {
  const emulator::CurrentDevice current(device());
  block_.setEndKind(EndKind::OnDate);
  EXPECT_FALSE(correctEndKind(outlook(), 4711, kAppointmentRecurrenceProperty, block_));
  EXPECT_EQ(block_.endKind(), EndKind::OnDate);
}

class FailingCorrection : public EndKindCorrection, public testing::WithParamInterface<const char*> {};

TEST_P(FailingCorrection, leavesTheKindOfThePattern) {
  const DWORD oid = addSeries();
  fault(GetParam());
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  // The pattern tells its occurrences, which by itself means kind 2.
  EXPECT_EQ(answer.vector()[answer.size() - 98 + 69], 2);
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingCorrection,
                         testing::Values("IPOutlookApp.GetItemFromOid#2=0x80070057",
                                         "IAppointment.QueryInterface#2=0x80004002",
                                         "IItem.GetProps=0x8007000E"));

TEST_F(EndKindCorrection, freesWhatTheHeapGave) {
  const DWORD oid = addSeries();
  observeCalls();
  reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(callNames("HeapFree").size(), 1u);
  EXPECT_EQ(calls("IItem.GetProps")[0]["args"][0], nlohmann::json::parse("[1075118145]"));  // 0x40150041
}

}  // namespace
}  // namespace qorv
