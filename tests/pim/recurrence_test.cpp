// The two conversions between the block and the object model's pattern, seen through requests and the call
// log.

#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

/// A put on the pattern: its name without the interface, and its argument.
using Put = std::pair<std::string, double>;
using Puts = std::vector<Put>;

// 2005-03-14, a Monday, in the object model's count of days.
constexpr double kMonday = 38425.0;

class Recurrence : public AgentTest {
 protected:
  DWORD add(const Bytes& recurrence) {
    return reply(request(2, kAppointment)
                     .u32(1)
                     .append(record(3).append(timeField(16, 9)).append(timeField(18, 10)))
                     .append(Bytes().u32(19).append(recurrence)))
        .dwordAt(2);
  }

  /// The puts that a block leads to, in order.
  Puts putsOf(const Bytes& recurrence) {
    observeCalls();
    add(recurrence);
    Puts puts;
    for (const auto& call : calls("IRecurrencePattern.put_")) {
      puts.emplace_back(call["call"].get<std::string>().substr(23), call["args"][0].get<double>());
    }
    return puts;
  }

  Bytes readBlock(DWORD oid) {
    const Bytes answer = reply(request(7, kAppointment).u32(oid));
    const std::size_t fixed = 7 + 2 * 20 + 5 * 8 + 4 * 10 + 4;
    return answer.slice(fixed, 98);
  }
};

const Bytes kStart = day(2005, 3, 14);
const Bytes kEnd = day(2005, 6, 30);

struct PutOrder {
  unsigned type;
  Puts parameters;  ///< between the type and the interval
};

class PutsOfType : public Recurrence, public testing::WithParamInterface<PutOrder> {};

TEST_P(PutsOfType, followTheFixedOrder) {
  const auto& [type, parameters] = GetParam();
  Puts expected{{"RecurrenceType", type}};
  expected.insert(expected.end(), parameters.begin(), parameters.end());
  expected.insert(expected.end(), {{"Interval", 2}, {"PatternStartDate", kMonday}, {"NoEndDate", -1}});
  EXPECT_EQ(putsOf(block(kStart, kEnd,
                         {.type = type,
                          .endKind = 3,
                          .interval = 2,
                          .dayOfWeekMask = 2,
                          .dayOfMonth = 14,
                          .instance = 2,
                          .monthOfYear = 3})),
            expected);
}

INSTANTIATE_TEST_SUITE_P(
    Types, PutsOfType,
    testing::Values(PutOrder{0, {}}, PutOrder{1, {{"DayOfWeekMask", 2}}}, PutOrder{2, {{"DayOfMonth", 14}}},
                    PutOrder{3, {{"Instance", 2}, {"DayOfWeekMask", 2}}},
                    PutOrder{5, {{"DayOfMonth", 14}, {"MonthOfYear", 3}}},
                    PutOrder{6, {{"MonthOfYear", 3}, {"Instance", 2}, {"DayOfWeekMask", 2}}}));

TEST_F(Recurrence, unknownTypesPutEverythingButTheTypeAndItsParameters) {
  for (const unsigned type : {4u, 7u, 255u}) {
    EXPECT_EQ(putsOf(block(kStart, kEnd, {.type = type, .occurrences = 3, .endKind = 2})),
              (Puts{{"Interval", 1}, {"PatternStartDate", kMonday}, {"Occurrences", 3}}))
        << type;
  }
}

TEST_F(Recurrence, startIsPutAsItsDayAndTheEndAsTheLastSecondOfItsDay) {
  const Puts puts = putsOf(block(day(2005, 3, 14, 17, 45), kEnd, {.type = 0, .endKind = 1}));
  // 2005-06-30 is 108 days after 2005-03-14; 23:59:59 is 86399 of 86400 seconds.
  ASSERT_EQ(puts.size(), 4u);
  EXPECT_EQ(puts[2], (Put{"PatternStartDate", kMonday}));
  EXPECT_EQ(puts[3].first, "PatternEndDate");
  EXPECT_NEAR(puts[3].second, kMonday + 108 + 86399.0 / 86400, 1e-9);
}

TEST_F(Recurrence, anUnknownEndKindPutsNoEnd) {
  for (const unsigned kind : {0u, 4u, 255u}) {
    EXPECT_EQ(putsOf(block(kStart, kEnd, {.type = 0, .endKind = kind})),
              (Puts{{"RecurrenceType", 0}, {"Interval", 1}, {"PatternStartDate", kMonday}}))
        << kind;
  }
}

struct Ceiling {
  DWORD asked;
  double put;
};

class OccurrenceCeiling : public Recurrence, public testing::WithParamInterface<Ceiling> {};

TEST_P(OccurrenceCeiling, is999ComparedUnsigned) {
  const auto& [asked, put] = GetParam();
  const Puts puts = putsOf(block(kStart, kEnd, {.type = 0, .occurrences = asked, .endKind = 2}));
  EXPECT_EQ(puts.back(), (Put{"Occurrences", put}));
}

INSTANTIATE_TEST_SUITE_P(Counts, OccurrenceCeiling,
                         testing::Values(Ceiling{998, 998}, Ceiling{999, 999}, Ceiling{1000, 999},
                                         Ceiling{0x80000000, 999}, Ceiling{0xFFFFFFFF, 999}));

TEST_F(Recurrence, anIntervalThatReadsBackAbove999IsPutAgain) {
  const Puts above = putsOf(block(kStart, kEnd, {.type = 0, .endKind = 3, .interval = 1000}));
  EXPECT_EQ(above[1], (Put{"Interval", 1000}));
  EXPECT_EQ(above.back(), (Put{"Interval", 999}));
  const Puts at = putsOf(block(kStart, kEnd, {.type = 0, .endKind = 3, .interval = 999}));
  EXPECT_EQ(at.back(), (Put{"NoEndDate", -1}));
}

TEST_F(Recurrence, aStartThatIsNoDateIsNotPut) {
  const Puts puts = putsOf(block(Bytes().zeros(16), kEnd, {.type = 0, .endKind = 3}));
  EXPECT_EQ(puts, (Puts{{"RecurrenceType", 0}, {"Interval", 1}, {"NoEndDate", -1}}));
}

struct RoundTrip {
  const char* name;
  BlockNumbers sent;
  Bytes readStart;
  Bytes readEnd;
  DWORD readOccurrences;
};

class PatternRoundTrip : public Recurrence, public testing::WithParamInterface<RoundTrip> {};

TEST_P(PatternRoundTrip, readsBackWhatTheTypeUses) {
  const RoundTrip& trip = GetParam();
  BlockNumbers expected = trip.sent;
  expected.occurrences = trip.readOccurrences;
  EXPECT_EQ(readBlock(add(block(kStart, kEnd, trip.sent))), block(trip.readStart, trip.readEnd, expected));
}

// Ends computed by hand: five days from the 14th; Mondays and Thursdays 14, 17, 21; the 14th of April, June,
// August with an interval of two months; second Mondays March 14, April 11; 14 March each year; last Fridays
// of March.
INSTANTIATE_TEST_SUITE_P(
    Types, PatternRoundTrip,
    testing::Values(
        RoundTrip{"daily",
                  {.type = 0, .occurrences = 5, .endKind = 2},
                  Bytes().time(2005, 3, 1, 14),
                  Bytes().time(2005, 3, 5, 18),
                  5},
        RoundTrip{"weekly",
                  {.type = 1, .occurrences = 3, .endKind = 2, .dayOfWeekMask = 2 | 16},
                  Bytes().time(2005, 3, 1, 14),
                  Bytes().time(2005, 3, 1, 21),
                  3},
        RoundTrip{"monthly",
                  {.type = 2, .occurrences = 3, .endKind = 2, .interval = 2, .dayOfMonth = 14},
                  Bytes().time(2005, 3, 1, 14),
                  Bytes().time(2005, 7, 4, 14),
                  3},
        RoundTrip{"monthNth",
                  {.type = 3, .occurrences = 2, .endKind = 2, .dayOfWeekMask = 2, .instance = 2},
                  Bytes().time(2005, 3, 1, 14),
                  Bytes().time(2005, 4, 1, 11),
                  2},
        RoundTrip{"yearly",
                  {.type = 5, .occurrences = 2, .endKind = 2, .dayOfMonth = 14, .monthOfYear = 3},
                  Bytes().time(2005, 3, 1, 14),
                  Bytes().time(2006, 3, 2, 14),
                  2},
        RoundTrip{
            "yearNth",
            {.type = 6, .occurrences = 2, .endKind = 2, .dayOfWeekMask = 32, .instance = 5, .monthOfYear = 3},
            Bytes().time(2005, 3, 1, 14),
            Bytes().time(2006, 3, 5, 31),
            2}),
    [](const auto& trip) { return std::string(trip.param.name); });

TEST_F(Recurrence, aSeriesThatEndsOnADateReadsBackSoAlthoughItTellsItsOccurrences) {
  // Mondays up to June 30: from March 14 to June 27 there are sixteen.
  const Bytes read = readBlock(add(block(kStart, kEnd, {.type = 1, .endKind = 1, .dayOfWeekMask = 2})));
  EXPECT_EQ(read.vector()[69], 1);
  EXPECT_EQ(read.dwordAt(65), 16u);
}

TEST_F(Recurrence, aSeriesWithoutEndReadsBackKindThreeAndIsNotLookedUpAgain) {
  const DWORD oid = add(block(kStart, kEnd, {.type = 0, .endKind = 3}));
  observeCalls();
  EXPECT_EQ(readBlock(oid).vector()[69], 3);
  EXPECT_EQ(callNames("IPOutlookApp.GetItemFromOid").size(), 1u);
  EXPECT_TRUE(callNames("IItem.GetProps").empty());
}

TEST_F(Recurrence, gettersFollowTheFixedOrder) {
  const DWORD oid = add(
      block(kStart, kEnd, {.type = 6, .endKind = 3, .dayOfWeekMask = 32, .instance = 5, .monthOfYear = 3}));
  observeCalls();
  readBlock(oid);
  EXPECT_EQ(callNames("IRecurrencePattern.get_"),
            (std::vector<std::string>{
                "IRecurrencePattern.get_RecurrenceType", "IRecurrencePattern.get_PatternStartDate",
                "IRecurrencePattern.get_PatternEndDate", "IRecurrencePattern.get_Interval",
                "IRecurrencePattern.get_MonthOfYear", "IRecurrencePattern.get_Instance",
                "IRecurrencePattern.get_DayOfWeekMask", "IRecurrencePattern.get_NoEndDate",
                "IRecurrencePattern.get_Exceptions"}));
}

TEST_F(Recurrence, occurrencesThatCannotBeToldMeanAnEndDate) {
  const DWORD oid = add(block(kStart, kEnd, {.type = 0, .occurrences = 5, .endKind = 2}));
  fault("IRecurrencePattern.get_Occurrences=0x80004005");
  fault("IItem.GetProps=0x80004005");
  EXPECT_EQ(readBlock(oid).vector()[69], 1);
}

TEST_F(Recurrence, theBlockIsTheHandlersOwnSoUnusedFieldsStayFromTheRecordBefore) {
  const DWORD weekly = add(block(kStart, kEnd, {.type = 1, .endKind = 3, .dayOfWeekMask = 2 | 8}));
  const DWORD daily = add(block(kStart, kEnd, {.type = 0, .endKind = 3}));
  const Bytes answer = reply(request(16, kAppointment).u32(2).u32(weekly).u32(daily));
  const std::size_t recordSize = 7 + 2 * 20 + 5 * 8 + 4 * 10 + 4 + 98;
  ASSERT_EQ(answer.size(), 7 + 2 * recordSize);
  const Bytes second = answer.slice(7 + 2 * recordSize - 98, 98);
  EXPECT_EQ(second.vector()[64], 0);
  EXPECT_EQ(second.dwordAt(78), 2u | 8u);
}

}  // namespace
}  // namespace qorv
