// Mail: message files onto the device, and a Maildir back.
#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <vector>

#include "tests/apps/journey.h"

namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

class MailJourney : public Journey {
 protected:
  MailJourney() { load({{"registry", {{"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", {{"MachineID", "PDA"}}}}}}); }

  void load(const Json& snapshot) {
    std::ofstream(folder_.file("change.json")) << snapshot;
    ASSERT_EQ(run("'" QORV_DEVICE "' load device change.json"), 0) << err_;
  }
  void loadMail(const std::string& folder, const Json& message) { load({{"mail", {{folder, {message}}}}}); }

  Json dumped() {
    EXPECT_EQ(run("'" QORV_DEVICE "' dump device"), 0) << err_;
    return Json::parse(out_);
  }
  std::map<std::string, Json> dumpedBySubject(const std::string& folder) {
    std::map<std::string, Json> messages;
    const Json dump = dumped();
    for (const Json& message : dump["mail"][folder]) messages[message["Subject"]] = message;
    return messages;
  }

  /// The device has no file but those that it came with: none is left of an attachment's way.
  void expectNoFilesLeft() {
    std::vector<std::string> paths;
    const Json dump = dumped();
    for (const Json& file : dump["files"]) paths.push_back(file["path"]);
    EXPECT_EQ(paths, (std::vector<std::string>{"\\Windows", "\\Temp", "\\My Documents"}));
  }

  /// Of the Maildir, by their places in it.
  std::vector<std::string> pulled() {
    std::vector<std::string> files;
    const fs::path maildir = folder_.file("pulled/mail");
    for (const auto& entry : fs::recursive_directory_iterator(maildir)) {
      if (entry.is_regular_file() && entry.path().filename() != "maildirfolder") {
        files.push_back(entry.path().lexically_relative(maildir).string());
      }
    }
    std::ranges::sort(files);
    return files;
  }
  void write(const std::string& name, const std::string& content) {
    fs::create_directories(fs::path(folder_.file(name)).parent_path());
    folder_.write(name, content);
  }
  void pull() { ASSERT_EQ(sync("pull pulled"), 0) << err_; }
  bool said(const std::string& text) const { return (out_ + err_).find(text) != std::string::npos; }
};

const Json kGreeting{{"Id", 20},
                     {"Sender", "ann@lee.example"},
                     {"To", {"bo@x.example", "cy@x.example"}},
                     {"Subject", "Greeting"},
                     {"Delivered", "2005-03-14T13:35:10.000Z"},
                     {"Body", "Hello\r\nBo"}};

TEST_F(MailJourney, messageFilesTravelWithoutADifference) {
  EXPECT_EQ(sync("push " + sample("mail")), 0) << out_ << err_;
  EXPECT_EQ(err_, "");
  EXPECT_TRUE(said("6 added, 0 changed")) << out_;
  const auto inbox = dumpedBySubject("Inbox");
  ASSERT_EQ(inbox.size(), 6u);
  const Json& invitation = inbox.at("Einladung zur Eröffnung – Freitag um 19 Uhr");
  EXPECT_EQ(invitation["Sender"], "clara@kunst.example");
  EXPECT_EQ(invitation["To"], Json({"ann@lee.example", "petr@novak.example"}));
  EXPECT_EQ(invitation["Cc"], Json({"gallery@kunst.example"}));
  EXPECT_EQ(invitation["Delivered"], "2005-03-14T08:12:40.000Z");
  EXPECT_EQ(invitation["Body"],
            "Liebe Ann, lieber Petr,\r\n\r\nam Freitag eröffnen wir. Kommt ihr?\r\n\r\nClara\r\n");
  ASSERT_EQ(invitation["Attachments"].size(), 2u);
  EXPECT_EQ(invitation["Attachments"][0]["Name"], "logo.gif");
  EXPECT_EQ(invitation["Attachments"][1]["Name"], "Anfahrt Köln.txt");
  EXPECT_EQ(invitation["Attachments"][1]["Data"], "TWl0IGRlciBMaW5pZSA5IGJpcyBOZXVtYXJrdC4K");
  EXPECT_EQ(inbox.at("Привет")["Body"], "Привет, Аня!\r\n\r\nДо встречи в Петербурге.\r\n");
  EXPECT_EQ(inbox.at("会議の予定")["Body"], "次の会議は火曜日です。\r\n");
  EXPECT_EQ(
      inbox.at("What to read in spring")["Body"],
      "Spring\r\n\r\nThree books, and a café – all for €10.\r\n\r\n- The Garden\r\n- Rivers & Roads\r\n");
  EXPECT_EQ(inbox.at("Round four")["Body"],
            "Board 2, white.\r\nFrom the next round on we begin at seven.\r\n");
  EXPECT_EQ(inbox.at("Round four")["Read"], true);
  EXPECT_EQ(inbox.at("Re: Round four")["Read"], false);
  EXPECT_EQ(inbox.at("Re: Round four")["Bcc"], Json({"petr@novak.example"}));
  expectNoFilesLeft();
}

TEST_F(MailJourney, aMailboxMayHaveABccWithoutATo) {
  write("a.eml", "From: a@x.example\nBcc: b@x.example\nSubject: secret\n\n");
  EXPECT_EQ(sync("push a.eml"), 0) << err_;
  EXPECT_EQ(dumpedBySubject("Inbox").at("secret")["Bcc"], Json({"b@x.example"}));
}

TEST_F(MailJourney, pullWritesAMaildirWithTheDevicesFolders) {
  loadMail("Inbox", kGreeting);
  loadMail("Sent Items", {{"Id", 21}, {"Subject", "Sent"}, {"Read", true}});
  loadMail("Drafts", {{"Id", 22}, {"Subject", "Draft"}, {"Read", true}});
  loadMail("Outbox", {{"Id", 23}, {"Subject", "Going"}});
  pull();
  EXPECT_EQ(pulled(),
            (std::vector<std::string>{".Drafts/cur/message-22@PDA:2,DS", ".Outbox/new/message-23@PDA",
                                      ".Sent/cur/message-21@PDA:2,S", "new/message-20@PDA"}));
  EXPECT_EQ(read(folder_.file("pulled/mail/new/message-20@PDA")),
            "Date: Mon, 14 Mar 2005 14:35:10 +0100\nFrom: ann@lee.example\nSubject: Greeting\n"
            "To: bo@x.example, cy@x.example\nMessage-Id: <message-20@PDA>\nStatus: O\nX-Qorv-Folder: Inbox\n"
            "MIME-Version: 1.0\nContent-Type: text/plain; charset=utf-8\n"
            "Content-Transfer-Encoding: quoted-printable\n\nHello\nBo=\n");
  pull();
  EXPECT_TRUE(said("0 written, 4 unchanged")) << out_;
}

TEST_F(MailJourney, aMessageThatWasReadMovesItsFile) {
  loadMail("Inbox", kGreeting);
  pull();
  loadMail("Inbox", {{"Id", 20}, {"Read", true}});
  pull();
  EXPECT_EQ(pulled(), std::vector<std::string>{"cur/message-20@PDA:2,S"});
}

TEST_F(MailJourney, marksOfMailProgramsStay) {
  loadMail("Inbox", kGreeting);
  pull();
  const fs::path maildir = folder_.file("pulled/mail");
  fs::rename(maildir / "new/message-20@PDA", maildir / "cur/message-20@PDA:2,FRS");
  pull();
  // The device has it unread.
  EXPECT_EQ(pulled(), std::vector<std::string>{"cur/message-20@PDA:2,FR"});
}

TEST_F(MailJourney, aFileThatIsNotTheMessagesStays) {
  loadMail("Inbox", kGreeting);
  write("pulled/mail/new/message-20@PDA", "From: me@x.example\n\nmine");
  EXPECT_EQ(sync("pull pulled"), 1);
  EXPECT_TRUE(said("pulled/mail/new/message-20@PDA: not this message's file, left as it is")) << err_;
  EXPECT_EQ(read(folder_.file("pulled/mail/new/message-20@PDA")), "From: me@x.example\n\nmine");
}

TEST_F(MailJourney, aPulledFileChangesItsMessageAndAddsNothingTwice) {
  Json greeting = kGreeting;
  greeting["Attachments"] = Json::array({{{"Name", "a.txt"}, {"Data", "aGk="}}});
  loadMail("Inbox", greeting);
  pull();
  const fs::path file = folder_.file("pulled/mail/new/message-20@PDA");
  const std::string text =
      std::regex_replace(read(file), std::regex("Subject: Greeting"), "Subject: Farewell");
  write("pulled/mail/new/message-20@PDA", text);
  EXPECT_EQ(sync("push pulled"), 0) << out_ << err_;
  EXPECT_TRUE(said("\"Farewell\": changed 20")) << out_;
  const Json farewell = dumpedBySubject("Inbox").at("Farewell");
  EXPECT_EQ(farewell["To"], greeting["To"]);
  EXPECT_EQ(farewell["Attachments"], greeting["Attachments"]);
  EXPECT_EQ(farewell["Body"], "Hello\r\nBo");
  expectNoFilesLeft();
}

TEST_F(MailJourney, theMaildirSaysWhereAMessageGoes) {
  const std::string mail = "From: a@x.example\nSubject: ";
  write("m/cur/1.host:2,S", mail + "in\n\n");
  write("m/cur/2.host:2,ST", mail + "trashed\n\n");
  fs::create_directories(folder_.file("m/new"));
  write("m/.Sent/cur/3.host:2,S", mail + "sent\n\n");
  fs::create_directories(folder_.file("m/.Sent/new"));
  write("m/.Drafts/new/4.host", mail + "draft\n\n");
  fs::create_directories(folder_.file("m/.Drafts/cur"));
  write("m/.Chess/new/5.host", mail + "chess\n\n");
  fs::create_directories(folder_.file("m/.Chess/cur"));
  EXPECT_EQ(sync("push m"), 0) << err_;
  EXPECT_TRUE(said("\"chess\": note: the device has no such folder: it goes to the Inbox")) << out_;
  EXPECT_EQ(dumpedBySubject("Inbox").size(), 2u);
  EXPECT_EQ(dumpedBySubject("Inbox").at("in")["Read"], true);
  EXPECT_EQ(dumpedBySubject("Inbox").at("chess")["Read"], false);
  EXPECT_EQ(dumpedBySubject("Sent Items").count("sent"), 1u);
  EXPECT_EQ(dumpedBySubject("Drafts").count("draft"), 1u);
}

TEST_F(MailJourney, whatTheDevicePutsElsewhereIsSaid) {
  write("a.eml", "From: a@x.example\nSubject: going\nX-Qorv-Folder: Outbox\n\n");
  EXPECT_EQ(sync("push a.eml"), 1);
  EXPECT_TRUE(said("\"going\": folder: sent Outbox, device has Inbox")) << err_;
}

TEST_F(MailJourney, aFileThatIsNoMailIsNamedAndTheRestGoesOn) {
  write("mail/a.eml", "no mail at all\n");
  write("mail/b.eml", "From: a@x.example\nSubject: good\n\n");
  write("mail/c.mbox", "From a@x Mon 9:00\n\nnothing\n\nFrom b@x Tue 9:00\nSubject: good too\n\n");
  EXPECT_EQ(sync("push mail"), 1);
  EXPECT_TRUE(said("mail/a.eml: not a mail: it has none of a mail's headers\n")) << err_;
  EXPECT_TRUE(said("mail/c.mbox:1: not a mail: it has none of a mail's headers\n")) << err_;
  EXPECT_TRUE(said("2 added, 0 changed, 2 skipped")) << out_;
}

TEST_F(MailJourney, aLargeAttachmentTravelsInPieces) {
  std::string mail = "From: a@x.example\nSubject: large\nContent-Type: application/x; name=a.bin\n\n";
  std::string data;
  for (int i = 0; i < 300'000; ++i) data += static_cast<char>('!' + i % 90);
  write("a.eml", mail + data);
  EXPECT_EQ(sync("push a.eml"), 0) << err_;
  ASSERT_EQ(sync("--json list mail"), 0);
  const Json listed = Json::parse(out_);
  const std::string oid = std::to_string(listed["mail"][0]["oid"].get<unsigned>());
  EXPECT_EQ(listed["mail"][0]["attachments"], Json({"a.bin"}));
  pull();
  // Base64 has four letters for three bytes, and line ends.
  const std::string file = read(folder_.file("pulled/mail/new/message-" + oid + "@PDA"));
  EXPECT_GT(file.size(), data.size() / 3 * 4);
  write("b.eml", file);
  EXPECT_EQ(sync("push b.eml"), 0) << err_;
  EXPECT_TRUE(said("\"large\": unchanged " + oid)) << out_;
  expectNoFilesLeft();
}

TEST_F(MailJourney, aMessageCanBeListedShownDumpedAndDeleted) {
  Json greeting = kGreeting;
  greeting["Attachments"] = Json::array({{{"Name", "a.txt"}, {"Data", "aGk="}}});
  loadMail("Inbox", greeting);
  EXPECT_EQ(sync("list mail"), 0);
  EXPECT_EQ(out_,
            "       OID  DATE                 FOLDER         FROM             SUBJECT\n"
            "        20  2005-03-14 14:35:10  Inbox, unread  ann@lee.example  Greeting\n"
            "1 message\n");
  EXPECT_EQ(sync("show mail 20"), 0);
  EXPECT_TRUE(said("\nSubject: Greeting\n")) << out_;
  EXPECT_TRUE(said("\naGk=\n")) << out_;
  EXPECT_EQ(sync("dump --raw mail 20"), 0) << err_;
  EXPECT_TRUE(said("folder and flags (tag 11): 254\n")) << out_;
  expectNoFilesLeft();
  EXPECT_EQ(sync("delete mail 20 99"), 1);
  EXPECT_EQ(out_, "deleted 20\n");
  EXPECT_TRUE(said("mail 99: the device did not delete it\n")) << err_;
  EXPECT_EQ(sync("show mail 20"), 1);
  EXPECT_TRUE(said("message 20: the device has no such item\n")) << err_;
  EXPECT_EQ(sync("dump --raw mail 20"), 1);
  EXPECT_TRUE(said("mail 20: the device has no such item\n")) << err_;
}

TEST_F(MailJourney, aPlaceIsShown) {
  loadMail("Inbox",
           {{"Id", 20}, {"Subject", "Meeting"}, {"Where", "Room 4"}, {"Start", "2005-03-14T13:00:00.000Z"}});
  EXPECT_EQ(sync("show mail 20"), 0);
  EXPECT_TRUE(said("\nX-Qorv-Place: Room 4\nX-Qorv-Start: 2005-03-14 14:00\n")) << out_;
}

TEST_F(MailJourney, attachmentsThatTheDeviceCannotGiveAreSaid) {
  Json greeting = kGreeting;
  greeting["Attachments"] = Json::array({{{"Name", "a.txt"}, {"Data", "aGk="}}});
  loadMail("Inbox", greeting);
  EXPECT_EQ(sync("pull pulled", "device --fault GetTempFileNameW=5"), 0);
  EXPECT_TRUE(said("message 20: the device doesn't give its attachments\n")) << err_;
  EXPECT_EQ(pulled(), std::vector<std::string>{"new/message-20@PDA"});
}

TEST_F(MailJourney, anAttachmentThatIsLostOnTheWayFailsItsMessage) {
  Json greeting = kGreeting;
  greeting["Attachments"] = Json::array({{{"Name", "a.txt"}, {"Data", "aGk="}}});
  loadMail("Inbox", greeting);
  // The agent makes the temporary file first; the desktop's reading is the second to open it.
  EXPECT_EQ(sync("pull pulled", "device --fault CreateFileW#2=32*1"), 1);
  EXPECT_TRUE(said("message 20: attachment \"a.txt\": ")) << err_;
  EXPECT_TRUE(said("in use by another program")) << err_;
  EXPECT_TRUE(pulled().empty());
  expectNoFilesLeft();
}

TEST_F(MailJourney, filesThatTheDeviceDoesNotAttachAreRemoved) {
  write("a.eml", "From: a@x.example\nSubject: s\nContent-Type: application/x; name=a.bin\n\ndata");
  EXPECT_EQ(sync("push a.eml", "device --fault 'IMessage.CreateAttach=0x80004005*1'"), 1);
  EXPECT_TRUE(said("attachment 1: sent \"a.bin\" of 4 bytes, device has none")) << err_;
  expectNoFilesLeft();
}

TEST_F(MailJourney, aDeviceThatTakesNoFileFailsTheMessageAlone) {
  write("mail/a.eml", "From: a@x.example\nSubject: with\nContent-Type: application/x; name=a.bin\n\ndata");
  write("mail/b.eml", "From: a@x.example\nSubject: without\n\n");
  EXPECT_EQ(sync("push mail", "device --fault WriteFile=112"), 1);
  EXPECT_TRUE(said("mail/a.eml: \"with\": ")) << err_;
  EXPECT_TRUE(said("1 added, 0 changed, 1 failed")) << out_;
  EXPECT_EQ(dumpedBySubject("Inbox").count("without"), 1u);
}

/// A message with two attachments, which every read leaves in files on the device.
Json withAttachments() {
  Json greeting = kGreeting;
  greeting["Attachments"] =
      Json::array({{{"Name", "a.txt"}, {"Data", "aGk="}}, {{"Name", "b.bin"}, {"Data", "AAEC"}}});
  return greeting;
}

TEST_F(MailJourney, aFileIsNotReplacedByOneThatLacksItsAttachments) {
  loadMail("Inbox", withAttachments());
  pull();
  const std::string before = read(folder_.file("pulled/mail/new/message-20@PDA"));
  EXPECT_EQ(sync("pull pulled", "device --fault GetTempFileNameW=5"), 1);
  EXPECT_TRUE(
      said("the device doesn't give its attachments: pulled/mail/new/message-20@PDA is left as it is"))
      << err_;
  EXPECT_EQ(read(folder_.file("pulled/mail/new/message-20@PDA")), before);
}

TEST_F(MailJourney, aFailureOnceLeavesNoFilesOnTheDevice) {
  loadMail("Inbox", withAttachments());
  for (const char* fault : {"IMAPIFolder.CreateMessage=0x80004005*1", "IMessage.CreateAttach=0x80004005*1",
                            "DeleteFileW=5*1", "IMAPIFolder.DeleteMessages=0x80004005*1"}) {
    EXPECT_EQ(sync("list mail", "device --fault " + std::string(fault)), 0) << fault << err_;
    expectNoFilesLeft();
    EXPECT_TRUE(dumpedBySubject("Drafts").empty()) << fault;
  }
}

TEST_F(MailJourney, whatTheDeviceKeepsIsNamed) {
  loadMail("Inbox", withAttachments());
  EXPECT_EQ(sync("list mail", "device --fault DeleteFileW=5"), 1);
  EXPECT_TRUE(said("1 message\n")) << out_;
  EXPECT_TRUE(said("mail: the device keeps its temporary file \"")) << err_;
  EXPECT_EQ(sync("pull pulled", "device --fault IMAPIFolder.DeleteMessages=0x80004005"), 1);
  EXPECT_TRUE(said("1 written")) << out_;
  EXPECT_TRUE(said("that removed its files")) << err_;
}

TEST_F(MailJourney, aMaildirThatIsPushedBackChangesNothing) {
  Json odd = withAttachments();
  odd["Subject"] = " two\r\nlines ";
  odd["Sender"] = "Ann Lee <ann@lee.example>";
  odd["To"] = {"a@x.example, b@x.example", "the team"};
  odd["Body"] = "bare\nline ends\r";
  loadMail("Inbox", odd);
  loadMail("Inbox", {{"Id", 21}, {"Delivered", "2005-03-27T01:30:00.000Z"}});
  loadMail("Outbox", {{"Id", 23}, {"Subject", "Going"}});
  pull();
  const Json before = dumped()["mail"];
  EXPECT_EQ(sync("push pulled"), 0) << err_;
  EXPECT_TRUE(said("0 added, 0 changed, 3 unchanged\n")) << out_;
  EXPECT_EQ(dumped()["mail"], before);
}

TEST_F(MailJourney, aFileThatAMailProgramMovedIsFoundAgain) {
  loadMail("Inbox", kGreeting);
  loadMail("Inbox", {{"Id", 21}, {"Subject", "Renamed"}, {"Read", true}});
  pull();
  const fs::path maildir = folder_.file("pulled/mail");
  fs::create_directories(maildir / ".Archive/cur");
  fs::create_directories(maildir / ".Archive/new");
  fs::rename(maildir / "new/message-20@PDA", maildir / ".Archive/cur/message-20@PDA,S=99:2,R");
  fs::rename(maildir / "cur/message-21@PDA:2,S", maildir / "cur/12.M34.host:2,S");
  loadMail("Inbox", {{"Id", 20}, {"Read", true}});
  pull();
  EXPECT_EQ(pulled(), (std::vector<std::string>{".Archive/cur/message-20@PDA:2,RS", "cur/12.M34.host:2,S"}));
}

TEST_F(MailJourney, whatIsInAFilesPlaceFailsThatMessageAlone) {
  loadMail("Inbox", kGreeting);
  loadMail("Inbox", {{"Id", 21}, {"Subject", "Other"}});
  fs::create_directories(folder_.file("pulled/mail/new/message-20@PDA/x"));
  fs::create_directories(folder_.file("pulled/mail/cur"));
  EXPECT_EQ(sync("pull pulled"), 1);
  EXPECT_TRUE(said("message 20: pulled/mail/new/message-20@PDA: not a regular file")) << err_;
  EXPECT_TRUE(said("1 written")) << out_;
}

TEST_F(MailJourney, withoutALogOnThereIsNoMail) {
  EXPECT_EQ(sync("list mail", "device --fault MAPILogonEx=0x80004005"), 1);
  EXPECT_TRUE(said("the device can't list all its items")) << err_;
}

TEST_F(MailJourney, aMailProgramReadsWhatPullWrote) {
  if (run("command -v mscan") != 0) GTEST_SKIP() << "mblaze is not installed: scripts/setup installs it";
  ASSERT_EQ(sync("push " + sample("mail")), 0) << err_;
  loadMail("Sent Items", {{"Subject", "Gesendet"}, {"Sender", "me@home.example"}, {"Read", true}});
  pull();
  write("scan",
        "mlist pulled/mail pulled/mail/.Sent | mscan -f '%f|%S' | sort\n"
        "mlist pulled/mail | while read -r file; do mshow -t \"$file\"; done\n");
  ASSERT_EQ(run("HOME=$PWD LC_ALL=C.UTF-8 sh scan"), 0) << err_;
  EXPECT_TRUE(said("clara@kunst.example|Einladung zur Eröffnung – Freitag um 19 Uhr\n")) << out_;
  EXPECT_TRUE(said("tanaka@kaisha.example|会議の予定\n")) << out_;
  EXPECT_TRUE(said("me@home.example|Gesendet\n")) << out_;
  EXPECT_EQ(std::count(out_.begin(), out_.end(), '|'), 7) << out_;
  EXPECT_TRUE(said("name=\"Anfahrt Köln.txt\"")) << out_;
}

}  // namespace
