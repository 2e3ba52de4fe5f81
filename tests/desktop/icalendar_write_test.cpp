// Calendar files as they are written, and read again.
#include <algorithm>
#include <gmock/gmock.h>

#include "tests/desktop/icalendar_patterns.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::HasSubstr;
using testing::Not;

class CalendarWriting : public CalendarTest {};

Appointment fullEntry() {
  Appointment entry;
  entry.subject = u"Planning, part 2";
  entry.location = u"Room 4; left";
  entry.categories = u"Work, Team";
  entry.body = u"Bring:\r\n\\ the list";
  entry.start = at(2005, 3, 14, 9);
  entry.end = at(2005, 3, 14, 10, 30);
  entry.isPrivate = true;
  entry.busyStatus = 3;
  entry.reminderSet = true;
  entry.reminderMinutes = 1440;
  return entry;
}

TEST_F(CalendarWriting, givesEveryField) {
  EXPECT_EQ(writeCalendar(fullEntry(), "abc@qorv"),
            "BEGIN:VCALENDAR\r\n"
            "VERSION:2.0\r\n"
            "PRODID:-//qorv-sync//EN\r\n"
            "BEGIN:VEVENT\r\n"
            "UID:abc@qorv\r\n"
            "DTSTAMP:19700101T000000Z\r\n"
            "DTSTART:20050314T090000\r\n"
            "DTEND:20050314T103000\r\n"
            "SUMMARY:Planning\\, part 2\r\n"
            "LOCATION:Room 4\\; left\r\n"
            "CATEGORIES:Work,Team\r\n"
            "DESCRIPTION:Bring:\\n\\\\ the list\r\n"
            "CLASS:PRIVATE\r\n"
            "TRANSP:OPAQUE\r\n"
            "X-MICROSOFT-CDO-BUSYSTATUS:OOF\r\n"
            "BEGIN:VALARM\r\n"
            "ACTION:DISPLAY\r\n"
            "DESCRIPTION:Planning\\, part 2\r\n"
            "TRIGGER:-PT1440M\r\n"
            "END:VALARM\r\n"
            "END:VEVENT\r\n"
            "END:VCALENDAR\r\n");
}

TEST_F(CalendarWriting, givesAllDayEntriesAsDatesAndTheirSeriesWithExceptions) {
  Appointment entry;
  entry.subject = u"Fair";
  entry.start = at(2005, 3, 14);
  entry.end = at(2005, 3, 15);  // two days
  entry.allDay = true;
  entry.busyStatus = 0;
  entry.recurrence = patternOf("weekly MO times 4", at(2005, 3, 14));
  entry.exceptions.resize(2);
  entry.exceptions[0].originalDate = at(2005, 3, 21);
  entry.exceptions[0].deleted = true;
  entry.exceptions[1].originalDate = at(2005, 3, 28);
  entry.exceptions[1].start = at(2005, 3, 29);
  entry.exceptions[1].end = at(2005, 3, 30);  // the day after its only day
  entry.exceptions[1].subject = u"Short fair";
  EXPECT_EQ(writeCalendar(entry, "7"),
            "BEGIN:VCALENDAR\r\n"
            "VERSION:2.0\r\n"
            "PRODID:-//qorv-sync//EN\r\n"
            "BEGIN:VEVENT\r\n"
            "UID:7\r\n"
            "DTSTAMP:19700101T000000Z\r\n"
            "DTSTART;VALUE=DATE:20050314\r\n"
            "DTEND;VALUE=DATE:20050316\r\n"
            "RRULE:FREQ=WEEKLY;COUNT=4;BYDAY=MO\r\n"
            "EXDATE;VALUE=DATE:20050321\r\n"
            "SUMMARY:Fair\r\n"
            "TRANSP:TRANSPARENT\r\n"
            "X-MICROSOFT-CDO-BUSYSTATUS:FREE\r\n"
            "END:VEVENT\r\n"
            "BEGIN:VEVENT\r\n"
            "UID:7\r\n"
            "DTSTAMP:19700101T000000Z\r\n"
            "RECURRENCE-ID;VALUE=DATE:20050328\r\n"
            "DTSTART;VALUE=DATE:20050329\r\n"
            "DTEND;VALUE=DATE:20050330\r\n"
            "SUMMARY:Short fair\r\n"
            "TRANSP:TRANSPARENT\r\n"
            "X-MICROSOFT-CDO-BUSYSTATUS:FREE\r\n"
            "END:VEVENT\r\n"
            "END:VCALENDAR\r\n");
}

TEST_F(CalendarWriting, namesTheTimeOfDeletedAndChangedOccurrences) {
  Appointment entry = fullEntry();
  entry.recurrence = patternOf("daily", at(2005, 3, 14));
  entry.exceptions.resize(2);
  entry.exceptions[0].originalDate = at(2005, 3, 15);
  entry.exceptions[0].deleted = true;
  entry.exceptions[1].originalDate = at(2005, 3, 16);
  entry.exceptions[1].start = at(2005, 3, 16, 14);
  entry.exceptions[1].end = at(2005, 3, 16, 15);
  const std::string text = writeCalendar(entry, "7");
  EXPECT_THAT(text, HasSubstr("\r\nEXDATE:20050315T090000\r\n"));
  EXPECT_THAT(
      text,
      HasSubstr("\r\nRECURRENCE-ID:20050316T090000\r\nDTSTART:20050316T140000\r\nDTEND:20050316T150000\r\n"));
}

TEST_F(CalendarWriting, foldsLongLinesBetweenCharacters) {
  Appointment entry = fullEntry();
  for (int i = 0; i < 400; ++i) entry.body += u"\u00E4\U0001F389";
  const std::string text = writeCalendar(entry, "1");
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find("\r\n", begin);
    ASSERT_NE(end, std::string::npos);
    EXPECT_LE(end - begin, 75U);
    // Every line is whole characters: none begins with a byte that continues one.
    const std::size_t first = text[begin] == ' ' ? begin + 1 : begin;
    EXPECT_NE(static_cast<unsigned char>(text[first]) & 0xC0, 0x80);
    begin = end + 2;
  }
  EXPECT_EQ(onlyEntry(text).appointment.body, entry.body);
}

TEST_F(CalendarWriting, replacesHalvesOfCharactersAndDropsControls) {
  Appointment entry = fullEntry();
  entry.subject =
      std::u16string(u"a") + char16_t{0xD83C} + u"b" + char16_t{0xDF89} + u"c\u0001\u0007d" + char16_t{0};
  const std::string text = writeCalendar(entry, "1");
  EXPECT_THAT(text, HasSubstr("SUMMARY:a\xEF\xBF\xBD"
                              "b\xEF\xBF\xBD"
                              "cd\r\n"));
}

TEST_F(CalendarWriting, leavesOutABusyStatusThatNobodyKnows) {
  Appointment entry = fullEntry();
  entry.busyStatus = 4;
  EXPECT_THAT(writeCalendar(entry, "1"), Not(HasSubstr("BUSYSTATUS")));
}

TEST_F(CalendarWriting, givesEveryAlarmAText) {
  Appointment entry = fullEntry();
  entry.subject.clear();
  entry.reminderMinutes = 0;
  EXPECT_THAT(writeCalendar(entry, "1"), HasSubstr("DESCRIPTION:Reminder\r\nTRIGGER:PT0S\r\n"));
}

TEST_F(CalendarWriting, isReadAgain) {
  Appointment entry = fullEntry();
  entry.categories = u"Work,Team";
  for (const bool isPrivate : {false, true}) {
    for (std::uint32_t busyStatus = 0; busyStatus < 4; ++busyStatus) {
      entry.isPrivate = isPrivate;
      entry.busyStatus = busyStatus;
      EXPECT_TRUE(onlyEntry(writeCalendar(entry, "1")).appointment == entry);
    }
  }
  for (const std::uint32_t minutes : {0U, 1U, 59U, 60U, 1440U, 10080U, 525600U}) {
    entry.reminderMinutes = minutes;
    EXPECT_TRUE(onlyEntry(writeCalendar(entry, "1")).appointment == entry);
  }
}

}  // namespace
}  // namespace desktop
