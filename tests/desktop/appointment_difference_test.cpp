#include "desktop/appointment_difference.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace desktop;
using testing::ElementsAre;
using testing::IsEmpty;

Appointment series() {
  Appointment entry;
  entry.subject = u"Standup";
  entry.location = u"Room 4";
  entry.start = {2005, 3, 14, 9, 0};
  entry.end = {2005, 3, 14, 9, 15};
  entry.recurrence.emplace();
  entry.recurrence->start = {2005, 3, 14};
  entry.recurrence->dayOfWeekMask = 2;
  AppointmentException exception;
  exception.originalDate = {2005, 3, 21};
  exception.start = {2005, 3, 21, 10, 0};
  exception.end = {2005, 3, 21, 10, 15};
  entry.exceptions = {exception};
  return entry;
}

std::vector<std::string> spelled(const Appointment& sent, const Appointment& device) {
  std::vector<std::string> lines;
  for (const Difference& difference : compareAppointments(sent, device)) lines.push_back(spell(difference));
  return lines;
}

TEST(AppointmentDifference, isNoneWhenOnlyTheIdentifierDiffers) {
  Appointment device = series();
  device.oid = 18;
  EXPECT_THAT(spelled(series(), device), IsEmpty());
}

TEST(AppointmentDifference, namesThePropertyAndBothValues) {
  Appointment device = series();
  device.location = u"Room";
  device.end = {2005, 3, 14, 10, 0};
  device.reminderSet = true;
  device.busyStatus = 0;
  EXPECT_THAT(spelled(series(), device),
              ElementsAre("end: sent 2005-03-14 09:15, device has 2005-03-14 10:00",
                          "busy status: sent 2, device has 0", "reminder: sent no, device has yes",
                          "location: sent \"Room 4\", device has \"Room\""));
}

TEST(AppointmentDifference, spellsNumbersWithTheirSign) {
  Appointment device = series();
  device.reminderMinutes = 0xFFFFFF5B;  // 165 less than nothing
  EXPECT_THAT(spelled(series(), device), ElementsAre("reminder minutes: sent 15, device has -165"));
}

TEST(AppointmentDifference, showsALongTextWhereItParts) {
  Appointment sent = series();
  sent.body = std::u16string(4096, u'a') + u"\u20ACb";
  Appointment device = sent;
  device.body = std::u16string(4096, u'a') + u"?b";
  EXPECT_THAT(spelled(sent, device),
              ElementsAre("body: sent (4098 characters) ...\"aaaaaaaaaaaaaaa\xE2\x82\xAC"
                          "b\"..., "
                          "device has (4098 characters) ...\"aaaaaaaaaaaaaaa?b\"..."));
}

TEST(AppointmentDifference, comparesRulesOfOneTypePartByPart) {
  Appointment device = series();
  device.recurrence->interval = 2;
  device.recurrence->dayOfWeekMask = 4;
  device.recurrence->end = RecurrenceEnd::AfterOccurrences;
  device.recurrence->occurrences = 999;
  EXPECT_THAT(
      spelled(series(), device),
      ElementsAre("repetition: interval: sent 1, device has 2", "repetition: weekdays: sent 2, device has 4",
                  "repetition: end: sent never, device has after 999 times"));
}

TEST(AppointmentDifference, tellsAMissingRule) {
  Appointment device = series();
  device.recurrence.reset();
  device.exceptions.clear();
  EXPECT_THAT(spelled(series(), device),
              ElementsAre("repetition: sent weekly, device has none",
                          "exception 2005-03-21: sent changed to 2005-03-21 10:00, device has none"));
}

TEST(AppointmentDifference, matchesExceptionsByTheirDay) {
  Appointment device = series();
  device.exceptions[0].start = {2005, 3, 21, 11, 0};
  AppointmentException extra;
  extra.originalDate = {2005, 3, 28};
  extra.deleted = true;
  device.exceptions.insert(device.exceptions.begin(), extra);
  EXPECT_THAT(spelled(series(), device),
              ElementsAre("exception 2005-03-21: start: sent 2005-03-21 10:00, device has 2005-03-21 11:00",
                          "exception 2005-03-28: sent none, device has deleted"));
}

TEST(AppointmentDifference, takesWhatAnExceptionDoesNotSayFromItsSeries) {
  Appointment sent = series();
  sent.exceptions[0].subject = u"Standup";
  EXPECT_THAT(spelled(sent, series()), IsEmpty());
  sent.exceptions[0].subject = u"Retro";
  sent.exceptions[0].reminderSet = true;
  EXPECT_THAT(spelled(sent, series()),
              ElementsAre("exception 2005-03-21: reminder: sent yes, device has no",
                          "exception 2005-03-21: subject: sent \"Retro\", device has \"Standup\""));
}

TEST(AppointmentDifference, tellsADeletedOccurrenceFromAChangedOne) {
  Appointment device = series();
  device.exceptions[0] = {};
  device.exceptions[0].originalDate = {2005, 3, 21};
  device.exceptions[0].deleted = true;
  EXPECT_THAT(spelled(series(), device),
              ElementsAre("exception 2005-03-21: sent changed, device has deleted"));
}

}  // namespace
