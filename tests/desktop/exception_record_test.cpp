#include "desktop/exception_record.h"

#include <gtest/gtest.h>

#include "desktop/device_error.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// 28 March 2005 was a Monday; 10:00 and 10:15.
const Bytes kOriginalDay = hex("D5 07 03 00 01 00 1C 00  00 00 00 00 00 00 00 00");
const Bytes kStart = hex("D5 07 03 00 01 00 1C 00  0A 00 00 00 00 00 00 00");
const Bytes kEnd = hex("D5 07 03 00 01 00 1C 00  0A 00 0F 00 00 00 00 00");
const Bytes kUnchanged = hex("FF FF FF FF");

AppointmentException tenOClock() {
  AppointmentException exception;
  exception.originalDate = {2005, 3, 28};
  exception.start = {2005, 3, 28, 10};
  exception.end = {2005, 3, 28, 10, 15};
  return exception;
}

Bytes written(const AppointmentException& exception) {
  WireWriter writer;
  writeException(writer, exception);
  return writer.take();
}

AppointmentException read(const Bytes& bytes) {
  WireReader reader(bytes);
  const AppointmentException exception = readException(reader);
  EXPECT_EQ(reader.left(), 0u);
  return exception;
}

TEST(ExceptionRecord, leavesWhatItDoesNotSayToTheSeries) {
  const Bytes bytes = written(tenOClock());
  EXPECT_EQ(bytes.size(), 80u);
  EXPECT_EQ(bytes, kOriginalDay + kStart + kEnd + u32(0) + kUnchanged + kUnchanged + kUnchanged + kUnchanged +
                       zeros(12));
}

TEST(ExceptionRecord, sendsASetReminderAsTheLowHalfAlone) {
  // All ones would mean: leave it as it is.
  AppointmentException exception = tenOClock();
  exception.reminderSet = true;
  exception.reminderMinutes = 30;
  exception.busyStatus = 3;
  EXPECT_EQ(written(exception), kOriginalDay + kStart + kEnd + u32(0) + kUnchanged +
                                    hex("FF FF 00 00  1E 00 00 00  03 00 00 00") + zeros(12));
  exception.reminderSet = false;
  EXPECT_EQ(written(exception), kOriginalDay + kStart + kEnd + u32(0) + kUnchanged +
                                    hex("00 00 00 00  1E 00 00 00  03 00 00 00") + zeros(12));
}

TEST(ExceptionRecord, announcesItsTextsAndSendsThemInOrder) {
  AppointmentException exception = tenOClock();
  exception.body = u"B";
  exception.subject = u"S";
  EXPECT_EQ(written(exception), kOriginalDay + kStart + kEnd + u32(0) + kUnchanged + kUnchanged + kUnchanged +
                                    kUnchanged + hex("01 00 00 00  00 00 00 00  01 00 00 00") +
                                    sentText(u"S") + sentText(u"B"));
}

TEST(ExceptionRecord, sendsADeletedOccurrence) {
  AppointmentException exception;
  exception.originalDate = {2005, 3, 28};
  exception.deleted = true;
  EXPECT_EQ(written(exception), kOriginalDay + zeros(32) + u32(1) + kUnchanged + kUnchanged + kUnchanged +
                                    kUnchanged + zeros(12));
}

TEST(ExceptionRecord, readsWhatTheDeviceSends) {
  // A true flag is all ones; the presence words are whatever the device has there.
  AppointmentException expected = tenOClock();
  expected.reminderSet = true;
  expected.reminderMinutes = 30;
  expected.busyStatus = 3;
  expected.subject = u"Late";
  expected.location = u"";
  EXPECT_EQ(
      read(kOriginalDay + kStart + kEnd + u32(0) + kUnchanged + hex("FF FF FF FF  1E 00 00 00  03 00 00 00") +
           hex("40 E2 01 00  01 00 00 80  00 00 00 00") + deviceText(u"Late") + deviceText(u"")),
      expected);
}

TEST(ExceptionRecord, readsNoTimesOfADeletedOccurrence) {
  AppointmentException expected;
  expected.originalDate = {2005, 3, 28};
  expected.deleted = true;
  EXPECT_EQ(read(kOriginalDay + Bytes(32, 0xEE) + u32(1) + Bytes(16, 0xFF) + zeros(12)), expected);
}

TEST(ExceptionRecord, refusesTimesThatThereAreNot) {
  const Bytes rest = u32(0) + kUnchanged + zeros(24);
  EXPECT_THROW(read(zeros(16) + kStart + kEnd + rest), ProtocolError);
  const Bytes thirteenthMonth = hex("D5 07 0D 00 01 00 1C 00  0A 00 00 00 00 00 00 00");
  EXPECT_THROW(read(kOriginalDay + thirteenthMonth + kEnd + rest), ProtocolError);
  EXPECT_THROW(read(kOriginalDay + kStart + thirteenthMonth + rest), ProtocolError);
}

TEST(ExceptionRecord, canBeWithoutAnEnd) {
  const Bytes never = hex("95 11 01 00 06 00 01 00  00 00 00 00 00 00 00 00");
  const Bytes rest = u32(0) + kUnchanged + zeros(24);
  EXPECT_EQ(read(kOriginalDay + kStart + never + rest).end, LocalTime{});
  EXPECT_EQ(read(kOriginalDay + kStart + zeros(16) + rest).end, LocalTime{});
}

}  // namespace
