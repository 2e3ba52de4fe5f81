// Tasks, and a mix of types.
#include <map>
#include <nlohmann/json.hpp>

#include "tests/apps/journey.h"

namespace {

using Json = nlohmann::json;

class TaskJourney : public Journey {
 protected:
  Json dumpedTasks() {
    EXPECT_EQ(run("'" QORV_DEVICE "' dump device"), 0) << err_;
    return Json::parse(out_)["tasks"];
  }

  void load(const Json& snapshot) {
    std::ofstream(folder_.file("change.json")) << snapshot;
    ASSERT_EQ(run("'" QORV_DEVICE "' load device change.json"), 0) << err_;
  }

  /// A calendar file in the test's folder.
  std::string write(const std::string& name, const std::string& lines) {
    folder_.write(name,
                  "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//EN\r\n" + lines + "END:VCALENDAR\r\n");
    return name;
  }
};

TEST_F(TaskJourney, errandsTravelWithoutADifference) {
  EXPECT_EQ(sync("push " + sample("tasks/errands.ics")), 0) << out_ << err_;
  EXPECT_EQ(err_, "");
  EXPECT_EQ(sync("list tasks"), 0);
  EXPECT_NE(out_.find("2005-03-31  no    normal      Pay the rent (monthly)\n"), std::string::npos) << out_;
  EXPECT_NE(out_.find("6 tasks\n"), std::string::npos) << out_;
}

TEST_F(TaskJourney, everythingThatADeviceHoldsTravelsToAnotherUnchanged) {
  ASSERT_EQ(sync("push " + sample("tasks")), 0) << out_ << err_;
  ASSERT_EQ(sync("pull first"), 0) << err_;
  create("other");
  ASSERT_EQ(sync("push first", "other"), 0) << out_ << err_;
  ASSERT_EQ(sync("pull second", "other"), 0) << err_;
  EXPECT_EQ(files("first/tasks").size(), 6u);
  EXPECT_EQ(files("first/tasks"), files("second/tasks"));
}

TEST_F(TaskJourney, aReminderAfterTheDueDateReachesTheDevice) {
  ASSERT_EQ(sync("push " + sample("tasks/errands.ics")), 0) << out_ << err_;
  for (const Json& task : dumpedTasks()) {
    if (task["Subject"] != "Pay the rent") continue;
    EXPECT_EQ(task["DueDate"], "2005-03-31T00:00:00.000");
    EXPECT_EQ(task["ReminderSet"], true);
    EXPECT_EQ(task["ReminderTime"], "2005-03-31T08:00:00.000");
    return;
  }
  FAIL() << "the task is not on the device";
}

TEST_F(TaskJourney, anEditedFileChangesItsOwnTask) {
  load({{"registry", {{"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", {{"MachineID", "PDA"}}}}},
        {"tasks",
         {{{"Oid", 501},
           {"Subject", "File"},
           {"DueDate", "2005-03-15T00:00:00.000"},
           {"ReminderSet", true},
           {"ReminderTime", "2005-03-15T08:00:00.000"}}}}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  std::string text = read(folder_.file("pulled/tasks/501.ics"));
  EXPECT_NE(text.find("UID:task-501@PDA\r\n"), std::string::npos) << text;
  text = std::regex_replace(text, std::regex("SUMMARY:File"), "SUMMARY:File it");
  folder_.write("pulled/tasks/501.ics", text);
  ASSERT_EQ(sync("push pulled/tasks"), 0) << out_ << err_;
  EXPECT_NE(out_.find("changed 501\n"), std::string::npos) << out_;
  Json tasks = dumpedTasks();
  ASSERT_EQ(tasks.size(), 1u);
  EXPECT_EQ(tasks[0]["Subject"], "File it");
  EXPECT_EQ(tasks[0]["ReminderTime"], "2005-03-15T08:00:00.000");

  // Without its due date and its reminder, the task has neither.
  write("501.ics", "BEGIN:VTODO\r\nUID:task-501@PDA\r\nSUMMARY:File it\r\nEND:VTODO\r\n");
  ASSERT_EQ(sync("push 501.ics"), 0) << out_ << err_;
  tasks = dumpedTasks();
  EXPECT_FALSE(tasks[0].contains("DueDate"));
  EXPECT_EQ(tasks[0]["ReminderSet"], false);
}

TEST_F(TaskJourney, whatTheDeviceCannotHoldIsNamed) {
  const std::string long1252 = std::string(5000, 'x');
  write("odd.ics",
        "BEGIN:VTODO\r\nUID:1\r\nSUMMARY:Odd\r\nDUE:20050315T170000\r\nLOCATION:Town\r\nRELATED-TO:2\r\n"
        "CLASS:CONFIDENTIAL\r\nEND:VTODO\r\n"
        "BEGIN:VTODO\r\nUID:2\r\nSUMMARY:Long\r\nDESCRIPTION:" +
            long1252 + "\u010C\r\nEND:VTODO\r\n");
  EXPECT_EQ(sync("push odd.ics"), 1);
  for (const char* note : {"note: of the due time 2005-03-15 17:00 only the day is kept\n",
                           "note: the location is not kept on the device\n",
                           "note: its place among other tasks is not kept on the device\n",
                           "note: the entry is confidential; the device knows only private\n"}) {
    EXPECT_NE(out_.find(std::string("odd.ics: \"Odd\": ") + note), std::string::npos) << out_;
  }
  EXPECT_TRUE(err_.starts_with("qorv-sync: odd.ics: \"Long\": body: sent (5001 characters)")) << err_;
}

TEST_F(TaskJourney, aMixedFileGoesToBothTypes) {
  write("mixed.ics",
        "BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Standup\r\nDTSTART:20050314T090000\r\nDTEND:20050314T091500\r\n"
        "END:VEVENT\r\nBEGIN:VTODO\r\nUID:2\r\nSUMMARY:File\r\nEND:VTODO\r\n");
  EXPECT_EQ(sync("push mixed.ics"), 0) << out_ << err_;
  EXPECT_EQ(sync("list appointments"), 0);
  EXPECT_NE(out_.find("Standup\n1 appointment\n"), std::string::npos) << out_;
  EXPECT_EQ(sync("list tasks"), 0);
  EXPECT_NE(out_.find("File\n1 task\n"), std::string::npos) << out_;
}

TEST_F(TaskJourney, todomanListsWhatPullWrote) {
  if (run("todoman --version") != 0) GTEST_SKIP() << "todoman is not installed: scripts/setup installs it";
  ASSERT_EQ(sync("push " + sample("tasks/errands.ics")), 0) << out_ << err_;
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  std::filesystem::create_directories(folder_.file("home/todoman"));
  folder_.write("home/todoman/config.py", "path = \"" + folder_.file("pulled/tasks") +
                                              "\"\ndate_format = \"%Y-%m-%d\"\ntime_format = \"%H:%M\"\n");
  const std::string home = "'" + folder_.file("home") + "'";
  ASSERT_EQ(run("HOME=" + home + " XDG_CONFIG_HOME=" + home + " XDG_CACHE_HOME=" + home +
                " XDG_DATA_HOME=" + home + " LC_ALL=C.UTF-8 todoman --porcelain list --status ANY"),
            0)
      << err_;
  std::map<std::string, Json> listed;
  for (const Json& task : Json::parse(out_)) listed[task["summary"]] = task;
  EXPECT_EQ(listed.size(), 6u);
  // Midnight of 1 April 2005 in Berlin, two hours ahead of UTC: 2005-03-31T22:00:00Z.
  EXPECT_EQ(listed["Renew the passport"]["due"], 1112306400);
  EXPECT_EQ(listed["Renew the passport"]["priority"], 1);
  EXPECT_EQ(listed["Renew the passport"]["description"],
            "Two photographs, the old passport\nand 59 euros in cash");
  EXPECT_EQ(listed["Put up the shelf"]["completed"], true);
  EXPECT_EQ(listed["Order grain for the mill"]["completed"], false);
  EXPECT_EQ(listed["Reserve a table at the Caf\u00E9 \u010Capek"]["due"], nullptr);
}

}  // namespace
