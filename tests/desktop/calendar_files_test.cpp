#include "desktop/calendar_files.h"

#include <gtest/gtest.h>

#include "desktop/device_error.h"
#include "desktop/input_error.h"
#include "tests/desktop/temporary_folder.h"

namespace {

using namespace desktop;

std::string calendar(const std::string& summary) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//tests//EN\r\nBEGIN:VEVENT\r\nUID:" + summary +
         "@calendar.example\r\nDTSTAMP:20050301T000000Z\r\nDTSTART:20050314T090000\r\nDTEND:"
         "20050314T091500\r\nSUMMARY:" +
         summary + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

class CalendarFiles : public testing::Test {
 protected:
  std::string read(const std::vector<std::filesystem::path>& paths) {
    std::string seen;
    for (const CalendarItem& item : readCalendarFiles(paths).items) {
      seen += std::filesystem::path(item.file).filename().string() + "=" + item.entry.uid + " ";
    }
    return seen;
  }

  TemporaryFolder folder;
};

TEST_F(CalendarFiles, areReadInTheOrderGiven) {
  const auto b = folder.write("b.ics", calendar("B"));
  const auto a = folder.write("a.txt", calendar("A"));
  EXPECT_EQ(read({b, a}), "b.ics=B@calendar.example a.txt=A@calendar.example ");
}

TEST_F(CalendarFiles, ofAFolderAreReadInTheOrderOfTheirNames) {
  folder.write("z.ics", calendar("Z"));
  folder.write("calendar/18.ICS", calendar("N"));
  folder.write("notes.txt", "none");
  EXPECT_EQ(read({folder.path()}), "18.ICS=N@calendar.example z.ics=Z@calendar.example ");
}

TEST_F(CalendarFiles, mustBeThereAndBeCalendars) {
  const auto good = folder.write("good.ics", calendar("A"));
  EXPECT_THROW(read({good, folder / "none.ics"}), InputError);
  EXPECT_THROW(read({good, folder.write("bad.txt", "no calendar")}), InputError);
  std::filesystem::create_directory(folder / "empty");
  EXPECT_THROW(read({folder / "empty"}), InputError);
}

TEST_F(CalendarFiles, goInAFolderOfTheirOwn) {
  EXPECT_EQ(makeCalendarFolder(folder / "new"), folder / "new" / "calendar");
  EXPECT_TRUE(std::filesystem::is_directory(folder / "new" / "calendar"));
  EXPECT_THROW(makeCalendarFolder(folder.write("file", "x")), InputError);
}

TEST(CalendarText, namesTheItemOnItsDevice) {
  Appointment appointment;
  appointment.oid = 18;
  appointment.start = appointment.end = {2005, 3, 14, 9, 0};
  EXPECT_NE(calendarText(appointment, u"PDA").find("UID:appointment-18@PDA\r\n"), std::string::npos);
}

TEST(CalendarText, refusesARuleWithoutMeaning) {
  Appointment appointment;
  appointment.start = appointment.end = {2005, 3, 14, 9, 0};
  appointment.recurrence.emplace();
  appointment.recurrence->type = RecurrenceType::Yearly;
  appointment.recurrence->start = {2005, 3, 14};
  appointment.recurrence->dayOfMonth = 14;
  appointment.recurrence->monthOfYear = 13;
  EXPECT_THROW(calendarText(appointment, u"PDA"), DeviceRefusal);
}

}  // namespace
