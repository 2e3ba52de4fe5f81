#include "desktop/item_files.h"

#include <gtest/gtest.h>

#include "desktop/calendar_text.h"
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

class ItemFiles : public testing::Test {
 protected:
  std::string read(const std::vector<std::filesystem::path>& paths) {
    std::string seen;
    for (const FileItem& item : readItemFiles(paths).items) {
      seen += std::filesystem::path(item.file).filename().string() + "=" + item.uid + " ";
    }
    return seen;
  }

  TemporaryFolder folder;
};

TEST_F(ItemFiles, areReadInTheOrderGiven) {
  const auto b = folder.write("b.ics", calendar("B"));
  const auto a = folder.write("a.txt", calendar("A"));
  EXPECT_EQ(read({b, a}), "b.ics=B@calendar.example a.txt=A@calendar.example ");
}

TEST_F(ItemFiles, ofAFolderAreReadInTheOrderOfTheirNames) {
  folder.write("z.ics", calendar("Z"));
  folder.write("calendar/18.ICS", calendar("N"));
  folder.write("notes.txt", "none");
  EXPECT_EQ(read({folder.path()}), "18.ICS=N@calendar.example z.ics=Z@calendar.example ");
}

TEST_F(ItemFiles, mustBeThereAndBeCalendars) {
  const auto good = folder.write("good.ics", calendar("A"));
  EXPECT_THROW(read({good, folder / "none.ics"}), InputError);
  EXPECT_THROW(read({good, folder.write("bad.dat", "no calendar")}), InputError);
  std::filesystem::create_directory(folder / "empty");
  EXPECT_THROW(read({folder / "empty"}), InputError);
}

TEST_F(ItemFiles, giveAllDayEndsInTheFormsThatTravel) {
  // Two whole days from Monday 14 March, weekly; the second time from Tuesday 22 March instead.
  const auto file = folder.write(
      "fair.ics",
      "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//tests//EN\r\n"
      "BEGIN:VEVENT\r\nUID:fair\r\nDTSTAMP:20050301T000000Z\r\nDTSTART;VALUE=DATE:20050314\r\n"
      "DTEND;VALUE=DATE:20050316\r\nRRULE:FREQ=WEEKLY;COUNT=5\r\nSUMMARY:Fair\r\nEND:VEVENT\r\n"
      "BEGIN:VEVENT\r\nUID:fair\r\nDTSTAMP:20050301T000000Z\r\nRECURRENCE-ID;VALUE=DATE:20050321\r\n"
      "DTSTART;VALUE=DATE:20050322\r\nDTEND;VALUE=DATE:20050324\r\nSUMMARY:Fair\r\nEND:VEVENT\r\n"
      "END:VCALENDAR\r\n");
  const FileItems read = readItemFiles(std::vector<std::filesystem::path>{file});
  ASSERT_EQ(read.items.size(), 1u);
  const Appointment& fair = std::get<Appointment>(read.items[0].item);
  EXPECT_EQ(fair.end, (LocalTime{2005, 3, 15}));
  ASSERT_EQ(fair.exceptions.size(), 1u);
  EXPECT_EQ(fair.exceptions[0].end, (LocalTime{2005, 3, 24}));
}

TEST_F(ItemFiles, goInAFolderOfTheirOwn) {
  EXPECT_EQ(makeItemFolder(folder / "new", kAppointmentKind), folder / "new" / "calendar");
  EXPECT_TRUE(std::filesystem::is_directory(folder / "new" / "calendar"));
  EXPECT_THROW(makeItemFolder(folder.write("file", "x"), kAppointmentKind), InputError);
}

TEST_F(ItemFiles, withoutANameThatTellsTheirFormatAreKnownByTheirFirstLine) {
  EXPECT_EQ(formatByName("a.dat"), nullptr);
  EXPECT_EQ(&formatOf("a.txt", "\xEF\xBB\xBF\r\nbegin:vcalendar\r\n"), &kCalendarFormat);
  EXPECT_EQ(formatByName("a.Ics"), &kCalendarFormat);
}

TEST(CalendarText, namesTheItemOnItsDevice) {
  Appointment appointment;
  appointment.start = appointment.end = {2005, 3, 14, 9, 0};
  EXPECT_NE(calendarText(appointment, "appointment-18@PDA").find("UID:appointment-18@PDA\r\n"),
            std::string::npos);
}

TEST(CalendarText, isWithoutAnEndThatTheEntryDoesNotHave) {
  Appointment appointment;
  appointment.start = {2005, 3, 14};
  appointment.allDay = true;
  const std::string text = calendarText(appointment, "1@PDA");
  EXPECT_NE(text.find("\r\nDTSTART;VALUE=DATE:20050314\r\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("DTEND"), std::string::npos) << text;
}

TEST(CalendarText, needsAStart) {
  Appointment appointment;
  appointment.end = {2005, 3, 14, 9, 0};
  EXPECT_THROW(calendarText(appointment, "1@PDA"), DeviceRefusal);
  appointment.allDay = true;
  EXPECT_THROW(calendarText(appointment, "1@PDA"), DeviceRefusal);
}

TEST(CalendarText, tellsWhetherItIsOneItemsAlone) {
  const std::string own = "BEGIN:VEVENT\r\nUID:appointment-18@PDA\r\nEND:VEVENT\r\n";
  EXPECT_TRUE(namesOnly(own, "appointment-18@PDA"));
  EXPECT_TRUE(namesOnly(own + own, "appointment-18@PDA"));
  EXPECT_FALSE(namesOnly(own, "appointment-1@PDA"));
  EXPECT_FALSE(namesOnly(own, "appointment-18@PDA2"));
  EXPECT_FALSE(namesOnly(own + "UID:dentist\r\n", "appointment-18@PDA"));
  EXPECT_FALSE(namesOnly("", "appointment-18@PDA"));
  EXPECT_FALSE(namesOnly("DESCRIPTION:UID:appointment-18@PDA\r\n", "appointment-18@PDA"));
}

TEST(CalendarText, tellsItAlsoByAnIdentityOverSeveralLines) {
  Appointment appointment;
  appointment.oid = 18;
  appointment.start = appointment.end = {2005, 3, 14, 9, 0};
  const std::string uid = "appointment-18@" + std::string(200, 'x');
  const std::string text = calendarText(appointment, uid);
  EXPECT_EQ(text.find(uid), std::string::npos);
  EXPECT_TRUE(namesOnly(text, uid));
}

TEST(CalendarText, refusesARuleWithoutMeaning) {
  struct Broken {
    RecurrenceType type;
    std::uint32_t Recurrence::*member;
    std::uint32_t value;
  };
  for (const Broken& broken : {
           Broken{RecurrenceType::Daily, &Recurrence::interval, 0},
           Broken{RecurrenceType::Weekly, &Recurrence::dayOfWeekMask, 0},
           Broken{RecurrenceType::Weekly, &Recurrence::dayOfWeekMask, 128},
           Broken{RecurrenceType::Monthly, &Recurrence::dayOfMonth, 0xFFFFFFFF},
           Broken{RecurrenceType::MonthlyNth, &Recurrence::instance, 6},
           Broken{RecurrenceType::Yearly, &Recurrence::monthOfYear, 13},
           Broken{RecurrenceType::YearlyNth, &Recurrence::monthOfYear, 0},
       }) {
    Appointment appointment;
    appointment.start = appointment.end = {2005, 3, 14, 9, 0};
    Recurrence rule;
    rule.type = broken.type;
    rule.start = {2005, 3, 14};
    rule.dayOfWeekMask = rule.dayOfMonth = rule.instance = rule.monthOfYear = 1;
    appointment.recurrence = rule;
    EXPECT_NO_THROW(calendarText(appointment, "1@PDA"));
    (*appointment.recurrence).*broken.member = broken.value;
    EXPECT_THROW(calendarText(appointment, "1@PDA"), DeviceRefusal) << static_cast<int>(broken.type);
  }
}

}  // namespace
