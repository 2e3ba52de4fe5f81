// Single events of calendar files: times, texts, flags, and what is said about the rest.
#include <gmock/gmock.h>

#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class CalendarEvents : public CalendarTest {};

constexpr const char* kStart = "DTSTART:20050314T090000\r\n";

Appointment entryOf(const std::string& lines) {
  return onlyEntry(eventOf(lines)).appointment;
}

std::vector<std::string> notesOf(const std::string& lines) {
  return onlyEntry(eventOf(lines)).notes;
}

TEST_F(CalendarEvents, giveEveryFieldThatTheDeviceHas) {
  const CalendarEntry entry = onlyEntry(
      eventOf("DTSTAMP:20050301T120000Z\r\n"
              "DTSTART:20050314T090000\r\n"
              "DTEND:20050314T101530\r\n"
              "SUMMARY:Planning\r\n"
              "LOCATION:Room 4\r\n"
              "CATEGORIES:Work,Team\r\n"
              "DESCRIPTION:Bring the list\r\n"
              "CLASS:PRIVATE\r\n"
              "TRANSP:OPAQUE\r\n"
              "X-MICROSOFT-CDO-BUSYSTATUS:OOF\r\n"
              "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:Planning\r\nTRIGGER:-PT20M\r\nEND:VALARM\r\n"));
  Appointment expected;
  expected.start = at(2005, 3, 14, 9);
  expected.end = at(2005, 3, 14, 10, 15, 30);
  expected.subject = u"Planning";
  expected.location = u"Room 4";
  expected.categories = u"Work,Team";
  expected.body = u"Bring the list";
  expected.isPrivate = true;
  expected.busyStatus = 3;
  expected.reminderSet = true;
  expected.reminderMinutes = 20;
  EXPECT_TRUE(entry.appointment == expected);
  EXPECT_EQ(entry.uid, "1");
  EXPECT_EQ(entry.where, "file.ics:4: 1");
  EXPECT_THAT(entry.notes, IsEmpty());
}

TEST_F(CalendarEvents, withNothingButAStartTakeTheDevicesDefaults) {
  Appointment expected;
  expected.start = expected.end = at(2005, 3, 14, 9);
  EXPECT_TRUE(entryOf(kStart) == expected);
}

TEST_F(CalendarEvents, endByDuration) {
  EXPECT_EQ(entryOf("DTSTART:20050314T233000\r\nDURATION:PT1H30M\r\n").end, at(2005, 3, 15, 1));
  EXPECT_EQ(entryOf("DTSTART:20050314T233000\r\nDURATION:P1W\r\n").end, at(2005, 3, 21, 23, 30));
}

TEST_F(CalendarEvents, ofWholeDaysEndOnTheirLastDay) {
  // DTEND is the day after the last one.
  const Appointment days = entryOf("DTSTART;VALUE=DATE:20050314\r\nDTEND;VALUE=DATE:20050317\r\n");
  EXPECT_TRUE(days.allDay);
  EXPECT_EQ(days.start, at(2005, 3, 14));
  EXPECT_EQ(days.end, at(2005, 3, 16));

  EXPECT_EQ(entryOf("DTSTART;VALUE=DATE:20050314\r\n").end, at(2005, 3, 14));
  EXPECT_EQ(entryOf("DTSTART;VALUE=DATE:20050314\r\nDURATION:P3D\r\n").end, at(2005, 3, 16));
  EXPECT_EQ(entryOf("DTSTART;VALUE=DATE:20050314\r\nDURATION:PT36H\r\n").end, at(2005, 3, 15));
}

TEST_F(CalendarEvents, ofOneDayMayNameThatDayAsTheirEnd) {
  EXPECT_EQ(entryOf("DTSTART;VALUE=DATE:20050314\r\nDTEND;VALUE=DATE:20050314\r\n").end, at(2005, 3, 14));
}

TEST_F(CalendarEvents, areAllDayAlsoWhenOnlyTheValueSaysSo) {
  EXPECT_TRUE(entryOf("DTSTART:20050314\r\n").allDay);
  EXPECT_FALSE(entryOf("DTSTART:20050314T000000\r\nDTEND:20050315T000000\r\n").allDay);
}

TEST_F(CalendarEvents, unfoldAndUnescapeTheirTexts) {
  const Appointment entry = entryOf(
      "DTSTART:20050314T090000\r\n"
      "SUMMARY:One\\, two\\; th\r\n"
      " ree \\\\ four\r\n"
      "\tfive\r\n"
      "DESCRIPTION:First line\\nsecond\\Nthird\\n\\nlast\r\n"
      "LOCATION:Main St 1\\nSpringfield\r\n");
  EXPECT_EQ(entry.subject, u"One, two; three \\ fourfive");
  EXPECT_EQ(entry.body, u"First line\r\nsecond\r\nthird\r\n\r\nlast");
  EXPECT_EQ(entry.location, u"Main St 1 Springfield");
}

TEST_F(CalendarEvents, keepNoLineEndsAroundOneLineTextsAndNoControlCharacters) {
  const Appointment entry = entryOf(
      "DTSTART:20050314T090000\r\n"
      "SUMMARY:Call\x07 back\\n\r\n"
      "LOCATION: \\nRoom 4 \r\n"
      "DESCRIPTION:one\x01\\ntwo\r\n");
  EXPECT_EQ(entry.subject, u"Call back");
  EXPECT_EQ(entry.location, u"Room 4");
  EXPECT_EQ(entry.body, u"one\r\ntwo");
}

TEST_F(CalendarEvents, keepTextsOfAllScripts) {
  const Appointment entry = entryOf(
      "DTSTART:20050314T090000\r\n"
      "SUMMARY:Gr\xC3\xBC\xC3\x9F"
      "e \xE4\xBC\x9A\xE8\xAD\xB0 \xF0\x9F\x8E\x89\r\n");
  EXPECT_EQ(entry.subject, u"Gr\u00FC\u00DFe \u4F1A\u8B70 \U0001F389");
}

TEST_F(CalendarEvents, areReadFromLineFeedsAloneAndAfterAByteOrderMark) {
  std::string text = eventOf(std::string(kStart) + "SUMMARY:Fol\r\n ded\r\n");
  std::erase(text, '\r');
  EXPECT_EQ(onlyEntry("\xEF\xBB\xBF" + text).appointment.subject, u"Folded");
}

TEST_F(CalendarEvents, joinTheirCategories) {
  EXPECT_EQ(entryOf(std::string(kStart) + "CATEGORIES:Work, Team A\r\nCATEGORIES:Home\r\n").categories,
            u"Work,Team A,Home");
}

TEST_F(CalendarEvents, sayHowBusyOneIs) {
  const auto busyStatus = [](const std::string& lines) { return entryOf(kStart + lines).busyStatus; };
  EXPECT_EQ(busyStatus(""), 2U);
  EXPECT_EQ(busyStatus("TRANSP:TRANSPARENT\r\n"), 0U);
  EXPECT_EQ(busyStatus("STATUS:TENTATIVE\r\n"), 1U);
  EXPECT_EQ(busyStatus("STATUS:TENTATIVE\r\nTRANSP:TRANSPARENT\r\n"), 0U);
  EXPECT_EQ(busyStatus("STATUS:CONFIRMED\r\nTRANSP:OPAQUE\r\n"), 2U);
  EXPECT_EQ(busyStatus("X-MICROSOFT-CDO-BUSYSTATUS:FREE\r\n"), 0U);
  EXPECT_EQ(busyStatus("X-MICROSOFT-CDO-BUSYSTATUS:TENTATIVE\r\nTRANSP:OPAQUE\r\n"), 1U);
  EXPECT_EQ(busyStatus("X-MICROSOFT-CDO-BUSYSTATUS:OOF\r\nTRANSP:TRANSPARENT\r\n"), 3U);
  EXPECT_EQ(busyStatus("X-MICROSOFT-CDO-BUSYSTATUS:ELSEWHERE\r\nTRANSP:TRANSPARENT\r\n"), 0U);
}

TEST_F(CalendarEvents, areTakenAsPrivateWhenConfidential) {
  EXPECT_FALSE(entryOf(std::string(kStart) + "CLASS:PUBLIC\r\n").isPrivate);
  const CalendarEntry entry = onlyEntry(eventOf(std::string(kStart) + "CLASS:CONFIDENTIAL\r\n"));
  EXPECT_TRUE(entry.appointment.isPrivate);
  EXPECT_THAT(entry.notes, ElementsAre("the entry is confidential; the device knows only private"));
}

TEST_F(CalendarEvents, noteWhatAPersonWouldMiss) {
  EXPECT_THAT(notesOf(std::string(kStart) + "ORGANIZER;CN=Ann:mailto:ann@example.org\r\n"
                                            "ATTENDEE;CN=Bo:mailto:bo@example.org\r\n"
                                            "ATTENDEE;CN=Cy:mailto:cy@example.org\r\n"
                                            "ATTACH:http://example.org/agenda.txt\r\n"
                                            "URL:http://example.org/\r\n"
                                            "GEO:52.5;13.4\r\n"
                                            "STATUS:CANCELLED\r\n"
                                            "PRIORITY:5\r\nSEQUENCE:3\r\nX-OTHER:1\r\n"),
              UnorderedElementsAre(
                  "attendees are not kept on the device", "the organizer is not kept on the device",
                  "attachments are not kept on the device", "the web address is not kept on the device",
                  "the position on the map is not kept on the device",
                  "the entry is cancelled; the device shows it like any other"));
}

TEST_F(CalendarEvents, areCutToTheTextsThatTheDeviceTakes) {
  const CalendarEntry entry = onlyEntry(eventOf(std::string(kStart) + "LOCATION:" + std::string(1024, 'x') +
                                                "\r\nSUMMARY:" + std::string(4096, 'y') +
                                                "\r\nDESCRIPTION:" + std::string(20000, 'z') + "\r\n"));
  EXPECT_EQ(entry.appointment.location.size(), 1023U);
  EXPECT_EQ(entry.appointment.subject.size(), 4096U);
  EXPECT_EQ(entry.appointment.body.size(), 20000U);
  EXPECT_THAT(entry.notes, ElementsAre("the location is cut to the device's 1023 characters"));
}

TEST_F(CalendarEvents, areNeverCutWithinACharacter) {
  const Appointment entry =
      entryOf(std::string(kStart) + "LOCATION:" + std::string(1022, 'x') + "\xF0\x9F\x8E\x89\r\n");
  EXPECT_EQ(entry.location, std::u16string(1022, u'x'));
}

}  // namespace
}  // namespace desktop
