#include "tests/desktop/sync_command.h"

#include <nlohmann/json.hpp>

namespace {

const std::string kEnd = "> 01 02\n< \n";
const std::string kIdentity = "> 0E 02\n< u32:72 d'PDA'\n";

// 14 March 2005, a Monday; 9:00 and 9:15.
const std::string kNine = "D507 0300 0100 0E00 0900 0000 0000 0000 ";
// 1 January 4501, a Saturday, and no day at all: two ways to say that there is no date.
const std::string kNever = "9511 0100 0600 0100 0000 0000 0000 0000 ";
const std::string kZeros = "zeros:16 ";
const std::string kQuarterPastNine = "D507 0300 0100 0E00 0900 0F00 0000 0000 ";

std::string list(const std::string& oids, int count) {
  return "> 0D 02\n< 01 00 u32:" + std::to_string(count) + " 00 " + oids + "\n";
}

/// The lists of the other types that a pull asks for: nothing there.
const std::string kNoContacts = "> 0D 01\n< 01 00 u32:0 00\n";
const std::string kNoContactsAndNotes = kNoContacts + "> 0D 05\n< 01 00 u32:0 00\n";
const std::string kNoOthers = "> 0D 03\n< 01 00 u32:0 00\n" + kNoContactsAndNotes;

/// The eleven fields of an appointment without any reminder, as the device sends them.
std::string recordAt(const std::string& start, const std::string& end, int oid, const std::string& subject,
                     const std::string& location) {
  return "01 00 u32:" + std::to_string(oid) + " 0B u32:16 " + start + "u32:18 " + end +
         "u32:5 u32:0 u32:6 u32:2 u32:8 u32:15 u32:7 u32:0 u32:4 u32:0 u32:1 d'" + subject + "' u32:2 d'" +
         location + "' u32:3 d'' u32:9 d'' ";
}

/// One at nine.
std::string record(int oid, const std::string& subject, const std::string& location) {
  return recordAt(kNine, kQuarterPastNine, oid, subject, location);
}

std::string readBack(int oid, const std::string& subject, const std::string& location) {
  return "> 10 02 u32:1 u32:" + std::to_string(oid) + "\n< 01 00 u32:1 0B " + record(oid, subject, location) +
         "\n";
}

/// The same as it is sent: eleven fields, flags, times, texts.
std::string sent(const std::string& subject, const std::string& location) {
  return "u32:11 u32:4 u32:0 u32:16 " + kNine + "u32:18 " + kQuarterPastNine +
         "u32:5 u32:0 u32:6 u32:2 u32:8 u32:15 u32:7 u32:0 u32:1 s'" + subject + "' u32:2 s'" + location +
         "' u32:3 s'' u32:9 s'' ";
}

std::string event(const std::string& summary, const std::string& location,
                  const std::string& start = "20050314T090000") {
  return "BEGIN:VEVENT\r\nUID:" + summary +
         "@calendar.example\r\nDTSTAMP:20050301T000000Z\r\nDTSTART:" + start +
         "\r\nDTEND:20050314T091500\r\nSUMMARY:" + summary + "\r\nLOCATION:" + location +
         "\r\nEND:VEVENT\r\n";
}

std::string calendar(const std::string& events) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//tests//EN\r\n" + events + "END:VCALENDAR\r\n";
}

TEST_F(SyncCommand, infoTellsWhatTheDeviceSays) {
  EXPECT_EQ(run("info", kIdentity +
                            "> 14 02\n< u32:1\n"
                            "> 06 01\n< 01 00 u32:3\n"
                            "> 06 02\n< 01 00 u32:12\n"
                            "> 06 03\n< 01 00 u32:0\n"
                            "> 06 04\n< 00 03 u32:0\n"
                            "> 06 05\n< 00 03 u32:0\n" +
                            kEnd),
            0);
  EXPECT_EQ(out,
            "identity      PDA\n"
            "ink notes     supported\n"
            "contacts      3\n"
            "appointments  12\n"
            "tasks         0\n"
            "mail          not available\n"
            "notes         not available\n");
  EXPECT_EQ(err, "");
}

TEST_F(SyncCommand, listSortsByStartAndKeepsTerminalsSafe) {
  EXPECT_EQ(run("list appointments", list("u32:18", 1) + readBack(18, "Stand\x1B[up", "Room 4") + kEnd), 0);
  EXPECT_EQ(out,
            "       OID  START             END               SUBJECT\n"
            "        18  2005-03-14 09:00  2005-03-14 09:15  Stand [up\n"
            "1 appointment\n");
}

TEST_F(SyncCommand, listGivesJsonAlone) {
  EXPECT_EQ(run("list appointments --json", list("u32:18", 1) + readBack(18, "Standup", "Room 4") + kEnd), 0);
  const auto json = nlohmann::json::parse(out);
  EXPECT_EQ(json["appointments"][0]["oid"], 18);
  EXPECT_EQ(json["appointments"][0]["location"], "Room 4");
  EXPECT_EQ(json["appointments"][0]["start"], "2005-03-14T09:00:00");
  EXPECT_EQ(json["appointments"][0]["all_day"], false);
  EXPECT_EQ(json["failures"], nlohmann::json::array());
}

TEST_F(SyncCommand, showPrintsACalendarFile) {
  EXPECT_EQ(run("show appointments 18", kIdentity + readBack(18, "Standup", "Room 4") + kEnd), 0);
  EXPECT_TRUE(out.starts_with("BEGIN:VCALENDAR\r\n"));
  EXPECT_NE(out.find("UID:appointment-18@PDA\r\n"), std::string::npos);
  EXPECT_NE(out.find("DTSTART:20050314T090000\r\n"), std::string::npos);
}

TEST_F(SyncCommand, showNamesAnItemWithoutAStart) {
  for (const std::string& start : {kNever, kZeros}) {
    EXPECT_EQ(run("show appointments 18", kIdentity + "> 10 02 u32:1 u32:18\n< 01 00 u32:1 0B " +
                                              recordAt(start, kNever, 18, "Some day", "") + "\n" + kEnd),
              1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "qorv-sync: appointment 18: has no start\n");
  }
}

TEST_F(SyncCommand, showNamesAnItemThatIsNotThere) {
  EXPECT_EQ(
      run("show appointments 99", kIdentity + "> 10 02 u32:1 u32:99\n< 01 00 u32:0 00 zeros:7\n" + kEnd), 1);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "qorv-sync: appointment 99: the device has no such item\n");
}

TEST_F(SyncCommand, pushReportsEveryDifference) {
  folder.write("standup.ics", calendar(event("Standup", "Room 4")));
  EXPECT_EQ(run("push standup.ics", kIdentity + list("", 0) + "> 0F 02 u32:1 02 02 u32:1 " +
                                        sent("Standup", "Room 4") + "\n< 01 00 u32:18 u32:1\n" +
                                        readBack(18, "Standup", "Room") + kEnd),
            1);
  EXPECT_EQ(out,
            "standup.ics: \"Standup\": added as 18\n"
            "1 added, 0 changed, 1 not held as sent\n");
  EXPECT_EQ(err, "qorv-sync: standup.ics: \"Standup\": location: sent \"Room 4\", device has \"Room\"\n");
}

TEST_F(SyncCommand, pushIsDoneWhenTheDeviceHoldsWhatWasSent) {
  folder.write("standup.ics", calendar(event("Standup", "Room 4")));
  EXPECT_EQ(run("push --json standup.ics", kIdentity + list("", 0) + "> 0F 02 u32:1 02 02 u32:1 " +
                                               sent("Standup", "Room 4") + "\n< 01 00 u32:18 u32:1\n" +
                                               readBack(18, "Standup", "Room 4") + kEnd),
            0);
  const auto item = nlohmann::json::parse(out)["items"][0];
  EXPECT_EQ(item["file"], "standup.ics");
  EXPECT_EQ(item["action"], "added");
  EXPECT_EQ(item["oid"], 18);
  EXPECT_EQ(item["differences"], nlohmann::json::array());
  EXPECT_EQ(err, "");
}

TEST_F(SyncCommand, pushSkipsABrokenItemAndSendsTheRest) {
  folder.write("mixed.ics", calendar(event("Broken", "", "20051399T990000") + event("Standup", "Room 4")));
  EXPECT_EQ(run("push mixed.ics", kIdentity + list("", 0) + "> 0F 02 u32:1 02 02 u32:1 " +
                                      sent("Standup", "Room 4") + "\n< 01 00 u32:18 u32:1\n" +
                                      readBack(18, "Standup", "Room 4") + kEnd),
            1);
  EXPECT_EQ(out,
            "mixed.ics: \"Standup\": added as 18\n"
            "1 added, 0 changed, 1 skipped\n");
  EXPECT_TRUE(err.starts_with("qorv-sync: mixed.ics:4: Broken@calendar.example: ")) << err;
}

TEST_F(SyncCommand, pushSendsNothingWhenOneFileIsNone) {
  folder.write("standup.ics", calendar(event("Standup", "Room 4")));
  folder.write("prose.ics", "Dear Ann,\n");
  // The device would refuse any request.
  EXPECT_EQ(run("push standup.ics prose.ics", "exit 9\n"), 2);
  EXPECT_TRUE(err.starts_with("qorv-sync: prose.ics")) << err;
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1);
  EXPECT_EQ(run("push standup.ics none.ics", "exit 9\n"), 2);
  EXPECT_EQ(err, "qorv-sync: none.ics: No such file or directory\n");
  EXPECT_EQ(out, "");
}

TEST_F(SyncCommand, pullWritesOnlyWhatChanged) {
  const std::string script =
      kIdentity + list("u32:18", 1) + readBack(18, "Standup", "Room 4") + kNoOthers + kEnd;
  EXPECT_EQ(run("pull .", script), 0);
  EXPECT_EQ(out, "./calendar/18.ics\n1 written, 0 unchanged\n");
  EXPECT_NE(folder.read("calendar/18.ics").find("LOCATION:Room 4\r\n"), std::string::npos);
  EXPECT_EQ(run("pull .", script), 0);
  EXPECT_EQ(out, "0 written, 1 unchanged\n");
}

TEST_F(SyncCommand, pullLeavesOutDatesThatAreNotThere) {
  EXPECT_EQ(run("pull .", kIdentity + list("u32:18 u32:19 u32:20", 3) +
                              "> 10 02 u32:3 u32:18 u32:19 u32:20\n< 01 00 u32:3 0B " +
                              recordAt(kZeros, kZeros, 18, "Some day", "") +
                              recordAt(kNine, kNever, 19, "Standup", "") +
                              recordAt(kNine, kZeros, 20, "Retro", "") + "\n" + kNoOthers + kEnd),
            1);
  EXPECT_EQ(out, "./calendar/19.ics\n./calendar/20.ics\n2 written, 0 unchanged\n");
  EXPECT_EQ(err, "qorv-sync: appointment 18: has no start\n");
  for (const char* name : {"calendar/19.ics", "calendar/20.ics"}) {
    const std::string text = folder.read(name);
    EXPECT_NE(text.find("\r\nDTSTART:20050314T090000\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("DTEND"), std::string::npos) << text;
  }
}

TEST_F(SyncCommand, listShowsWhatHasNoDate) {
  EXPECT_EQ(run("list appointments", list("u32:18", 1) + "> 10 02 u32:1 u32:18\n< 01 00 u32:1 0B " +
                                         recordAt(kNine, kNever, 18, "Standup", "") + "\n" + kEnd),
            0);
  EXPECT_NE(out.find("        18  2005-03-14 09:00  none  Standup\n"), std::string::npos) << out;
}

TEST_F(SyncCommand, pullReplacesItsOwnFilesOnly) {
  const auto script = [](const std::string& subject) {
    return kIdentity + list("u32:18 u32:19 u32:20", 3) +
           "> 10 02 u32:3 u32:18 u32:19 u32:20\n< 01 00 u32:3 0B " + record(18, subject, "") +
           record(19, subject, "") + record(20, subject, "") + "\n" + kNoOthers + kEnd;
  };
  folder.write("calendar/18.ics", calendar(event("Dentist", "Town")));
  std::filesystem::create_directories(folder / "calendar" / "20.ics");
  for (const char* subject : {"Standup", "Retro"}) {
    EXPECT_EQ(run("pull .", script(subject)), 1);
    EXPECT_EQ(out, "./calendar/19.ics\n1 written, 0 unchanged\n");
    EXPECT_EQ(err,
              "qorv-sync: appointment 18: ./calendar/18.ics: not this appointment's file, left as it is\n"
              "qorv-sync: appointment 20: ./calendar/20.ics: not a regular file\n");
    EXPECT_EQ(folder.read("calendar/18.ics"), calendar(event("Dentist", "Town")));
    EXPECT_NE(folder.read("calendar/19.ics").find("SUMMARY:" + std::string(subject) + "\r\n"),
              std::string::npos);
  }
}

// 15 March 2005, a Tuesday.
const std::string kTuesday = "D507 0300 0200 0F00 0000 0000 0000 0000 ";

/// The ten fields of a task that has a due date and no start, as the device sends them.
std::string taskRecord(int oid, const std::string& due, const std::string& subject, int complete) {
  return "01 00 u32:" + std::to_string(oid) + " 0A u32:3 " + kNever + "u32:4 " + due +
         "u32:7 u32:0 u32:5 u32:2 u32:10 " + kNever + "u32:9 u32:0 u32:6 u32:" + std::to_string(complete) +
         " u32:1 d'" + subject + "' u32:2 d'' u32:11 d'' ";
}

TEST_F(SyncCommand, listShowsTasksByTheirDueDates) {
  const std::string script =
      "> 0D 03\n< 01 00 u32:2 00 u32:20 u32:21\n"
      "> 10 03 u32:2 u32:20 u32:21\n< 01 00 u32:2 0A " +
      taskRecord(20, kNever, "Post", 1) + taskRecord(21, kTuesday, "File", 0) + "\n" + kEnd;
  EXPECT_EQ(run("list tasks", script), 0);
  EXPECT_EQ(out,
            "       OID  DUE         DONE  IMPORTANCE  SUBJECT\n"
            "        21  2005-03-15  no    high        File\n"
            "        20  none        yes   high        Post\n"
            "2 tasks\n");
  EXPECT_EQ(run("list tasks --json", script), 0);
  const auto json = nlohmann::json::parse(out);
  EXPECT_EQ(json["tasks"][1]["due_date"], "2005-03-15T00:00:00");
  EXPECT_EQ(json["tasks"][0]["due_date"], nullptr);
}

TEST_F(SyncCommand, showPrintsATaskAsACalendarFile) {
  EXPECT_EQ(run("show tasks 21", kIdentity + "> 10 03 u32:1 u32:21\n< 01 00 u32:1 0A " +
                                     taskRecord(21, kTuesday, "File", 0) + "\n" + kEnd),
            0);
  EXPECT_NE(out.find("BEGIN:VTODO\r\nUID:task-21@PDA\r\n"), std::string::npos) << out;
  EXPECT_NE(out.find("DUE;VALUE=DATE:20050315\r\n"), std::string::npos) << out;
}

TEST_F(SyncCommand, pullGoesOnWithTheOtherTypesWhenOneCannotBeListed) {
  EXPECT_EQ(run("pull .", kIdentity + "> 0D 02\n< 00 00 u32:0 00\n" + "> 0D 03\n< 01 00 u32:1 00 u32:21\n" +
                              "> 10 03 u32:1 u32:21\n< 01 00 u32:1 0A " +
                              taskRecord(21, kTuesday, "File", 0) + "\n" + kNoContactsAndNotes + kEnd),
            1);
  EXPECT_EQ(out, "./tasks/21.ics\n1 written, 0 unchanged\n");
  EXPECT_EQ(err, "qorv-sync: appointments: the device can't list all its items\n");
}

const std::string kFound = "> 0A 03 s'PC'\n< 01 00\n";

TEST_F(SyncCommand, changesAreListedAndThenCommitted) {
  EXPECT_EQ(
      run("changes tasks PC --commit",
          kFound + "> 0B 03 s'PC'\n< 01 00 u32:2 00 u32:20 03 u32:21 01\n> 0C 03 s'PC'\n< 01 00\n" + kEnd),
      0);
  EXPECT_EQ(out,
            "       OID  CHANGE\n"
            "        20  deleted\n"
            "        21  added\n"
            "2 changes\n"
            "committed to the contract \"PC\"\n");
  EXPECT_EQ(err, "");
}

TEST_F(SyncCommand, changesAreGivenAsJson) {
  EXPECT_EQ(run("changes tasks PC --json",
                "> 0A 03 s'PC'\n< 00 01\n> 0B 03 s'PC'\n< 01 00 u32:1 00 u32:20 03\n" + kEnd),
            0);
  const auto json = nlohmann::json::parse(out);
  EXPECT_EQ(json["changes"], nlohmann::json::parse(R"([{"oid": 20, "change": "deleted", "kind": 3}])"));
  EXPECT_EQ(json["known"], false);
  EXPECT_EQ(json["committed"], false);
  EXPECT_EQ(
      err, "qorv-sync: the device has no contract \"PC\" yet: these are all changes that it has on record\n");
}

TEST_F(SyncCommand, changesThatCannotBeListedAreNotCommitted) {
  EXPECT_EQ(run("changes tasks PC --commit", kFound + "> 0B 03 s'PC'\n< 00 01 u32:0 00\n" + kEnd), 1);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "qorv-sync: contract \"PC\": the device can't read up to which change it is\n");
  EXPECT_EQ(run("changes tasks PC --commit", kFound + "> 0B 03 s'PC'\n< 01 00 u32:2 00 u32:20 03\n" + kEnd),
            4);
  EXPECT_EQ(err, "qorv-sync: the device broke the protocol: a list of 2 entries has 5 bytes\n");
}

TEST_F(SyncCommand, changesAreNamedWhenTheCommitFails) {
  EXPECT_EQ(run("changes tasks PC --commit",
                kFound + "> 0B 03 s'PC'\n< 01 00 u32:0 00\n> 0C 03 s'PC'\n< 00 01\n" + kEnd),
            1);
  EXPECT_EQ(out, "0 changes\n");
  EXPECT_EQ(err, "qorv-sync: contract \"PC\": the device can't commit it\n");
}

TEST_F(SyncCommand, dumpShowsARecordThatBreaksTheProtocol) {
  EXPECT_EQ(run("dump --raw tasks 21", "> 07 03 u32:21\n< 01 00 u32:21 01 u32:8\n" + kEnd), 4);
  EXPECT_EQ(out,
            "     0  result: 1\n        01\n"
            "     1  status: 0\n        00\n"
            "     2  OID: 21\n        15 00 00 00\n"
            "     6  fields: 1\n        01\n"
            "     7  the rest\n        08 00 00 00\n");
  EXPECT_EQ(err, "qorv-sync: the device broke the protocol: tasks 21: there is no field 8\n");
}

TEST_F(SyncCommand, deleteNamesWhatWasNotDeleted) {
  EXPECT_EQ(run("delete appointments 18 99", "> 11 02 u32:2 u32:18 u32:99\n< u32:18\n" + kEnd), 1);
  EXPECT_EQ(out, "deleted 18\n");
  EXPECT_EQ(err, "qorv-sync: appointments 99: the device did not delete it\n");
}

}  // namespace
