#include "desktop/appointment_record.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "desktop/appointment_difference.h"
#include "desktop/appointment_json.h"
#include "desktop/calendar_text.h"
#include "desktop/device_error.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// 14 March 2005 was a Monday (1), the 15th a Tuesday, the 16th a Wednesday.
const Bytes kNine = hex("D5 07 03 00 01 00 0E 00  09 00 00 00 00 00 00 00");
const Bytes kQuarterPastNine = hex("D5 07 03 00 01 00 0E 00  09 00 0F 00 00 00 00 00");
const Bytes kMonday = hex("D5 07 03 00 01 00 0E 00  00 00 00 00 00 00 00 00");
const Bytes kTuesday = hex("D5 07 03 00 02 00 0F 00  00 00 00 00 00 00 00 00");
const Bytes kWednesday = hex("D5 07 03 00 03 00 10 00  00 00 00 00 00 00 00 00");
const Bytes kNextMonday = hex("D5 07 03 00 01 00 15 00  00 00 00 00 00 00 00 00");

Appointment standup() {
  Appointment entry;
  entry.subject = u"Standup";
  entry.location = u"Room 4";
  entry.body = u"Hi";
  entry.start = {2005, 3, 14, 9, 0};
  entry.end = {2005, 3, 14, 9, 15};
  entry.reminderSet = true;
  return entry;
}

/// Everything of the standup but its times, as it is sent behind them: tags 5, 6, 8, 7, 1, 2, 3, 9.
const Bytes kSentRest = u32(5) + u32(0) + u32(6) + u32(2) + u32(8) + u32(15) + u32(7) + hex("FF FF 00 00") +
                        u32(1) + sentText(u"Standup") + u32(2) + sentText(u"Room 4") + u32(3) +
                        sentText(u"") + u32(9) + sentText(u"Hi");

Bytes sentTimes(const Bytes& allDay, const Bytes& start, const Bytes& end) {
  return u32(4) + allDay + u32(16) + start + u32(18) + end;
}

/// The standup as the device sends it: header, then its fields in the device's order.
Bytes received(const Bytes& start, const Bytes& end, std::uint32_t allDay, std::uint8_t fields) {
  return hex("01 00 12 00 00 00") + Bytes{fields} + u32(16) + start + u32(18) + end + u32(5) + u32(0) +
         u32(6) + u32(2) + u32(8) + u32(15) + u32(7) + u32(1) + u32(4) + u32(allDay) + u32(1) +
         deviceText(u"Standup") + u32(2) + deviceText(u"Room 4") + u32(3) + deviceText(u"") + u32(9) +
         deviceText(u"Hi");
}

/// Weekly on Mondays from 14 March 2005, 10 times, with that many exceptions; what isn't used is 0.
Bytes weeklyBlock(std::uint32_t exceptions) {
  return kMonday + zeros(48) + hex("01  0A 00 00 00  02  00 00 00 00") + u32(1) + u32(2) + zeros(12) +
         u32(exceptions);
}

Recurrence weeklyTenTimes() {
  Recurrence rule;
  rule.start = {2005, 3, 14};
  rule.end = RecurrenceEnd::AfterOccurrences;
  rule.occurrences = 10;
  rule.dayOfWeekMask = 2;
  return rule;
}

Appointment read(const Bytes& bytes) {
  WireReader reader(bytes);
  Appointment entry = readAppointment(reader, 18);
  EXPECT_EQ(reader.left(), 0u);
  return entry;
}

TEST(AppointmentRecord, isWrittenFieldByField) {
  EXPECT_EQ(writeAppointment(standup()), u32(11) + sentTimes(u32(0), kNine, kQuarterPastNine) + kSentRest);
}

TEST(AppointmentRecord, sendsFlagsAsTheDeviceStoresThem) {
  // "All day" and "reminder" are stored as they come, in their low halves; "private" is a plain 1.
  Appointment entry = standup();
  entry.allDay = true;
  entry.start = entry.end = {2005, 3, 14};
  entry.isPrivate = true;
  const Bytes bytes = writeAppointment(entry);
  const Bytes begin = u32(11) + sentTimes(hex("FF FF 00 00"), kMonday, kMonday) + u32(5) + u32(1);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(begin.size())), begin);
}

TEST(AppointmentRecord, endsALongAllDaySeriesADayEarlier) {
  Appointment entry = standup();
  entry.allDay = true;
  entry.start = {2005, 3, 14};
  entry.end = {2005, 3, 16};
  const Bytes allDay = hex("FF FF 00 00");
  EXPECT_EQ(writeAppointment(entry), u32(11) + sentTimes(allDay, kMonday, kWednesday) + kSentRest);
  entry.recurrence = weeklyTenTimes();
  EXPECT_EQ(writeAppointment(entry),
            u32(12) + sentTimes(allDay, kMonday, kTuesday) + kSentRest + u32(19) + weeklyBlock(0));
}

TEST(AppointmentRecord, sendsASeriesWithItsExceptionsLast) {
  Appointment entry = standup();
  entry.recurrence = weeklyTenTimes();
  AppointmentException deleted;
  deleted.originalDate = {2005, 3, 21};
  deleted.deleted = true;
  entry.exceptions = {deleted};
  EXPECT_EQ(writeAppointment(entry), u32(12) + sentTimes(u32(0), kNine, kQuarterPastNine) + kSentRest +
                                         u32(19) + weeklyBlock(1) + kNextMonday + zeros(32) + u32(1) +
                                         Bytes(16, 0xFF) + zeros(12));
}

TEST(AppointmentRecord, isClearedByARecordWithoutFields) {
  EXPECT_EQ(clearingRecord(), u32(0));
}

TEST(AppointmentRecord, isReadFieldByField) {
  Appointment expected = standup();
  expected.oid = 18;
  EXPECT_EQ(read(received(kNine, kQuarterPastNine, 0, 11)), expected);
}

TEST(AppointmentRecord, readsASeriesAndLeavesOutWhatAnExceptionInherits) {
  const Bytes changed = kNextMonday + kNine + kQuarterPastNine + u32(0) + u32(0xFFFFFFFF) +
                        hex("FF FF FF FF") + u32(15) + u32(0) + u32(1) + u32(1) + u32(1) +
                        deviceText(u"Retro") + deviceText(u"Room 4") + deviceText(u"Hi");
  Appointment expected = standup();
  expected.oid = 18;
  expected.recurrence = weeklyTenTimes();
  AppointmentException exception;
  exception.originalDate = {2005, 3, 21};
  exception.start = {2005, 3, 14, 9, 0};
  exception.end = {2005, 3, 14, 9, 15};
  exception.busyStatus = 0;
  exception.subject = u"Retro";
  expected.exceptions = {exception};
  EXPECT_EQ(read(received(kNine, kQuarterPastNine, 0, 12) + u32(19) + weeklyBlock(1) + changed), expected);
}

TEST(AppointmentRecord, refusesARecordOfAnotherItem) {
  Bytes bytes = received(kNine, kQuarterPastNine, 0, 11);
  bytes[2] = 19;
  EXPECT_THROW(read(bytes), ProtocolError);
}

TEST(AppointmentRecord, refusesARecordThatFailed) {
  Bytes bytes = received(kNine, kQuarterPastNine, 0, 11);
  bytes[0] = 0;
  EXPECT_THROW(read(bytes), ProtocolError);
}

TEST(AppointmentRecord, refusesAFieldThatThereIsNot) {
  EXPECT_THROW(read(received(kNine, kQuarterPastNine, 0, 12) + u32(12) + u32(0)), ProtocolError);
}

TEST(AppointmentRecord, refusesARecordWithoutAllItsFields) {
  const Bytes whole = received(kNine, kQuarterPastNine, 0, 11);
  const Bytes body = u32(9) + deviceText(u"Hi");
  Bytes bytes(whole.begin(), whole.end() - static_cast<std::ptrdiff_t>(body.size()));
  bytes[6] = 10;
  EXPECT_THROW(read(bytes), ProtocolError);
}

TEST(AppointmentRecord, refusesMoreExceptionsThanTheReplyCanHold) {
  EXPECT_THROW(read(received(kNine, kQuarterPastNine, 0, 12) + u32(19) + weeklyBlock(0xFFFFFFFF)),
               ProtocolError);
}

TEST(AppointmentRecord, refusesATimeThatThereIsNot) {
  const Bytes thirteenthMonth = hex("D5 07 0D 00 01 00 0E 00  09 00 00 00 00 00 00 00");
  EXPECT_THROW(read(received(thirteenthMonth, kQuarterPastNine, 0, 11)), ProtocolError);
}

TEST(AppointmentRecord, canBeWithoutDates) {
  // 1 January 4501 was never a date that a person set; of all-day ends a day is taken before they are sent.
  const Bytes never = hex("95 11 01 00 06 00 01 00  00 00 00 00 00 00 00 00");
  const Bytes dayBefore = hex("94 11 0C 00 05 00 1F 00  00 00 00 00 00 00 00 00");
  EXPECT_EQ(read(received(never, kQuarterPastNine, 0, 11)).start, LocalTime{});
  EXPECT_EQ(read(received(zeros(16), kQuarterPastNine, 0, 11)).start, LocalTime{});
  EXPECT_EQ(read(received(kNine, never, 0, 11)).end, LocalTime{});
  EXPECT_EQ(read(received(kMonday, never, 1, 11)).end, LocalTime{});
  EXPECT_EQ(read(received(kMonday, zeros(16), 1, 11)).end, LocalTime{});
  EXPECT_EQ(read(received(kMonday, dayBefore, 1, 11)).end, LocalTime{});
  EXPECT_EQ(read(received(kNine, dayBefore, 0, 11)).end, (LocalTime{4500, 12, 31}));
  EXPECT_TRUE(toJson(read(received(never, never, 0, 11)))["start"].is_null());
}

class HostileRecord : public testing::Test {
 protected:
  /// All that is ever made of an entry that was read; a rule without meaning has no calendar file.
  static void show(const Appointment& entry) {
    toJson(entry);
    compareAppointments(standup(), entry);
    try {
      calendarText(entry, "1@PDA");
    } catch (const DeviceRefusal&) {
    }
  }

  /// As the weekly one, but with a value in each of its parameters: another type will find its own.
  const Bytes block = kMonday + zeros(48) + hex("01  0A 00 00 00  02  00 00 00 00") + u32(1) + u32(2) +
                      u32(14) + u32(2) + u32(3) + u32(1);
  const Bytes whole = received(kNine, kQuarterPastNine, 1, 12) + u32(19) + block + kNextMonday + kNine +
                      kQuarterPastNine + u32(0) + zeros(16) + u32(1) + u32(0) + u32(0) + deviceText(u"Late");
};

TEST_F(HostileRecord, isRefusedWhereverItIsCut) {
  ASSERT_NO_THROW(read(whole));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_THROW(read(cut), ProtocolError) << "after " << size << " bytes";
  }
}

TEST_F(HostileRecord, isReadOrRefusedWithAnyTwoBitsFlipped) {
  int refused = 0;
  for (std::size_t first = 0; first < whole.size() * 8; ++first) {
    for (const std::size_t distance : {1u, 8u, 9u, 31u, 257u}) {
      const std::size_t second = (first + distance) % (whole.size() * 8);
      Bytes bytes = whole;
      bytes[first / 8] ^= static_cast<std::uint8_t>(1u << first % 8);
      bytes[second / 8] ^= static_cast<std::uint8_t>(1u << second % 8);
      WireReader reader(bytes);
      try {
        const Appointment entry = readAppointment(reader, 18);
        if (distance == 1) show(entry);
      } catch (const ProtocolError&) {
        ++refused;
      }
    }
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
