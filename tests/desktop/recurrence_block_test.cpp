#include "desktop/recurrence_block.h"

#include <gtest/gtest.h>

#include "desktop/device_error.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// 14 March 2005, a Monday: 2005 = 07D5, month 3, day of week 1, day 14 = 0E.
const Bytes kFirstDay = hex("D5 07 03 00 01 00 0E 00  00 00 00 00 00 00 00 00");
// 25 April 2005, a Monday as well; the device gives the end of that day.
const Bytes kLastDay = hex("D5 07 04 00 01 00 19 00  00 00 00 00 00 00 00 00");
const Bytes kLastDayAtItsEnd = hex("D5 07 04 00 01 00 19 00  17 00 3B 00 3B 00 00 00");

Recurrence weekly() {
  Recurrence rule;
  rule.type = RecurrenceType::Weekly;
  rule.start = {2005, 3, 14};
  rule.interval = 2;
  rule.dayOfWeekMask = 2;
  return rule;
}

Bytes written(const Recurrence& rule, std::uint32_t exceptions) {
  WireWriter writer;
  writeRecurrenceBlock(writer, rule, exceptions);
  return writer.take();
}

/// The block from its type on: type, occurrences, end, 4 unused, interval, mask, day, instance, month,
/// exceptions.
Bytes tail(std::uint8_t type, std::uint32_t occurrences, std::uint8_t end,
           const std::vector<std::uint32_t>& words) {
  Bytes bytes = Bytes{type} + u32(occurrences) + Bytes{end} + zeros(4);
  for (const std::uint32_t word : words) bytes = bytes + u32(word);
  return bytes;
}

TEST(RecurrenceBlock, isWrittenForASeriesThatEndsOnADate) {
  Recurrence rule = weekly();
  rule.end = RecurrenceEnd::OnDate;
  rule.endDate = {2005, 4, 25};
  const Bytes bytes = written(rule, 3);
  EXPECT_EQ(bytes.size(), 98u);
  EXPECT_EQ(bytes, kFirstDay + kLastDay + zeros(32) +
                       hex("01  00 00 00 00  01  00 00 00 00  02 00 00 00  02 00 00 00"
                           "00 00 00 00  00 00 00 00  00 00 00 00  03 00 00 00"));
}

TEST(RecurrenceBlock, isWrittenForASeriesThatEndsAfterItsOccurrences) {
  Recurrence rule = weekly();
  rule.end = RecurrenceEnd::AfterOccurrences;
  rule.occurrences = 10;
  EXPECT_EQ(written(rule, 0), kFirstDay + zeros(48) + tail(1, 10, 2, {2, 2, 0, 0, 0, 0}));
}

struct TypeCase {
  RecurrenceType type;
  std::uint8_t code;
  std::vector<std::uint32_t> parameters;  ///< mask, day, instance, month: those that the type has
};

const std::vector<TypeCase> kTypes{
    {RecurrenceType::Daily, 0, {0, 0, 0, 0}},    {RecurrenceType::Weekly, 1, {2, 0, 0, 0}},
    {RecurrenceType::Monthly, 2, {0, 14, 0, 0}}, {RecurrenceType::MonthlyNth, 3, {2, 0, 5, 0}},
    {RecurrenceType::Yearly, 5, {0, 14, 0, 3}},  {RecurrenceType::YearlyNth, 6, {2, 0, 5, 3}},
};

Recurrence everyParameterSet(RecurrenceType type) {
  Recurrence rule = weekly();
  rule.type = type;
  rule.dayOfMonth = 14;
  rule.instance = 5;
  rule.monthOfYear = 3;
  return rule;
}

TEST(RecurrenceBlock, carriesOnlyTheParametersOfItsType) {
  for (const TypeCase& entry : kTypes) {
    const auto& p = entry.parameters;
    EXPECT_EQ(written(everyParameterSet(entry.type), 0),
              kFirstDay + zeros(48) + tail(entry.code, 0, 3, {2, p[0], p[1], p[2], p[3], 0}));
  }
}

TEST(RecurrenceBlock, readsOnlyTheParametersOfItsType) {
  for (const TypeCase& entry : kTypes) {
    // What the type, or the end, doesn't use are left-overs of an earlier block.
    const Bytes bytes = kFirstDay + Bytes(48, 0xEE) + tail(entry.code, 77, 3, {2, 2, 14, 5, 3, 4});
    WireReader reader(bytes);
    const RecurrenceBlock block = readRecurrenceBlock(reader);
    Recurrence expected = everyParameterSet(entry.type);
    const auto& p = entry.parameters;
    expected.dayOfWeekMask = p[0];
    expected.dayOfMonth = p[1];
    expected.instance = p[2];
    expected.monthOfYear = p[3];
    EXPECT_EQ(block.rule, expected) << "type " << int{entry.code};
    EXPECT_EQ(block.exceptionCount, 4u);
    EXPECT_EQ(reader.left(), 0u);
  }
}

TEST(RecurrenceBlock, readsTheDayOfAnEndDateWithoutItsTime) {
  const Bytes bytes = kFirstDay + kLastDayAtItsEnd + zeros(32) + tail(1, 7, 1, {2, 2, 0, 0, 0, 0});
  WireReader reader(bytes);
  const Recurrence rule = readRecurrenceBlock(reader).rule;
  EXPECT_EQ(rule.end, RecurrenceEnd::OnDate);
  EXPECT_EQ(rule.endDate, (LocalTime{2005, 4, 25}));
  EXPECT_EQ(rule.occurrences, 0u);
}

TEST(RecurrenceBlock, readsANumberOfOccurrences) {
  const Bytes bytes = kFirstDay + kLastDayAtItsEnd + zeros(32) + tail(1, 7, 2, {2, 2, 0, 0, 0, 0});
  WireReader reader(bytes);
  const Recurrence rule = readRecurrenceBlock(reader).rule;
  EXPECT_EQ(rule.occurrences, 7u);
  EXPECT_EQ(rule.endDate, LocalTime{});
}

TEST(RecurrenceBlock, refusesTypesAndEndsThatThereAreNot) {
  for (const int type : {4, 7, 255}) {
    const Bytes bytes =
        kFirstDay + zeros(48) + tail(static_cast<std::uint8_t>(type), 0, 3, {1, 0, 0, 0, 0, 0});
    WireReader reader(bytes);
    EXPECT_THROW(readRecurrenceBlock(reader), ProtocolError) << "type " << type;
  }
  for (const int end : {0, 4, 255}) {
    const Bytes bytes =
        kFirstDay + zeros(48) + tail(1, 0, static_cast<std::uint8_t>(end), {1, 2, 0, 0, 0, 0});
    WireReader reader(bytes);
    EXPECT_THROW(readRecurrenceBlock(reader), ProtocolError) << "end " << end;
  }
}

TEST(RecurrenceBlock, refusesDaysThatThereAreNot) {
  const Bytes noFirst = zeros(64) + tail(1, 0, 3, {1, 2, 0, 0, 0, 0});
  WireReader first(noFirst);
  EXPECT_THROW(readRecurrenceBlock(first), ProtocolError);
  const Bytes noLast = kFirstDay + zeros(48) + tail(1, 0, 1, {1, 2, 0, 0, 0, 0});
  WireReader last(noLast);
  EXPECT_THROW(readRecurrenceBlock(last), ProtocolError);
}

}  // namespace
