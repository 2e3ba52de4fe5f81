// The section of messages.
#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

constexpr const char* kFull = R"({"Id": 20, "Sender": "ann@example.org", "To": ["bo@example.org"],
  "Cc": ["cy@example.org", "di@example.org"], "Bcc": [""], "Subject": "Hi",
  "Delivered": "2005-03-14T13:35:10.250Z", "Read": true, "Body": "Grüße\r\n", "Where": "",
  "Start": "2005-03-15T09:00:00.000Z", "End": "2005-03-15T10:00:00.000Z",
  "Attachments": [{"Name": "a.txt", "Data": "aGk="}, {"Name": "a.txt", "Data": ""}]})";

constexpr const char* kEmpty = R"({"Id": 21, "Sender": "", "To": [], "Cc": [], "Bcc": [], "Subject": "",
  "Delivered": null, "Read": false, "Body": "", "Where": null, "Start": null, "End": null, "Attachments": []})";

std::string inFolder(const std::string& folder, const std::string& messages) {
  return R"({"mail": {")" + folder + R"(": [)" + messages + "]}}";
}

class SnapshotMail : public testing::Test {
 protected:
  Json inbox() { return device_.dump()["mail"]["Inbox"]; }
  Json first() { return inbox().at(0); }

  SnapshotDevice device_;
};

TEST_F(SnapshotMail, isEmptyOnAFreshDevice) {
  EXPECT_EQ(device_.dump()["mail"], Json::parse(R"({"Inbox": [], "Outbox": [], "Sent Items": [], "Drafts": [],
                                                    "Deleted Items": []})"));
}

TEST_F(SnapshotMail, isWrittenAsItWasRead) {
  for (const char* folder : {"Inbox", "Outbox", "Sent Items", "Drafts", "Deleted Items"}) {
    SnapshotDevice device;
    device.load(inFolder(folder, std::string(kFull) + "," + kEmpty));
    const Json list = device.dump()["mail"][folder];
    ASSERT_EQ(list.size(), 2U) << folder;
    EXPECT_EQ(list[0], Json::parse(kFull));
    EXPECT_EQ(list[1], Json::parse(kEmpty));
    EXPECT_EQ(reload(device.dumpText()), device.dumpText());
  }
}

TEST_F(SnapshotMail, hasWhatIsNotGivenEmpty) {
  device_.load(inFolder("Inbox", R"({"Id": 21})"));
  EXPECT_EQ(first(), Json::parse(kEmpty));
}

TEST_F(SnapshotMail, keepsWhatIsAbsentAndResetsWhatIsNull) {
  device_.load(inFolder("Inbox", kFull));
  const Json before = first();
  device_.load(inFolder("Inbox", R"({"Id": 20})"));
  EXPECT_EQ(first(), before);
  const Json empty = Json::parse(kEmpty);
  for (const auto& [key, value] : empty.items()) {
    if (key == "Id") continue;
    SnapshotDevice device;
    device.load(inFolder("Inbox", kFull));
    device.load(inFolder("Inbox", R"({"Id": 20, ")" + key + R"(": null})"));
    Json expected = before;
    expected[key] = value;
    EXPECT_EQ(device.dump()["mail"]["Inbox"][0], expected) << key;
  }
}

TEST_F(SnapshotMail, replacesListsAndBodies) {
  device_.load(inFolder("Inbox", kFull));
  device_.load(inFolder("Inbox", R"({"Id": 20, "Cc": ["x"], "Body": "New",
                                     "Attachments": [{"Name": "n"}, {"Data": "AAEC"}]})"));
  EXPECT_EQ(first()["To"], Json::parse(R"(["bo@example.org"])"));
  EXPECT_EQ(first()["Cc"], Json::parse(R"(["x"])"));
  EXPECT_EQ(first()["Body"], "New");
  EXPECT_EQ(first()["Attachments"],
            Json::parse(R"([{"Name": "n", "Data": ""}, {"Name": "", "Data": "AAEC"}])"));
}

TEST_F(SnapshotMail, isKnownByFolderAndIdentifier) {
  device_.load(
      R"({"mail": {"Inbox": [{"Id": 20, "Subject": "In"}], "Drafts": [{"Id": 20, "Subject": "Draft"}]}})");
  device_.load(R"({"mail": {"Drafts": [{"Id": 20, "Body": "Text"}], "Outbox": [{"Id": 20}]}})");
  const Json mail = device_.dump()["mail"];
  EXPECT_EQ(mail["Inbox"][0]["Body"], "");
  EXPECT_EQ(mail["Drafts"][0]["Subject"], "Draft");
  EXPECT_EQ(mail["Drafts"][0]["Body"], "Text");
  EXPECT_EQ(mail["Outbox"][0]["Subject"], "");
  EXPECT_EQ(reload(device_.dumpText()), device_.dumpText());
}

TEST_F(SnapshotMail, takesAnyIdentifier) {
  device_.load(inFolder("Inbox", R"({"Id": 4294967295}, {"Id": 0}, {"Id": 2147483648}, {"Id": 1})"));
  std::vector<std::uint32_t> ids;
  for (const Json& message : inbox()) ids.push_back(message["Id"]);
  EXPECT_EQ(ids, (std::vector<std::uint32_t>{4294967295, 0, 2147483648, 1}));
  EXPECT_EQ(reload(device_.dumpText()), device_.dumpText());
}

TEST_F(SnapshotMail, givesANewMessageTheNextFreeIdentifier) {
  // The next that the device gives out, 0x01000011 on a fresh one, is spoken for.
  const Oid next = device_.device().store.allocate(ObjectKind::Task) + 1;
  device_.device().store.commit();
  device_.load(R"({"mail": {"Inbox": [{"Id": null}, {}], "Drafts": [{"Id": )" + std::to_string(next) +
               "}]}}");
  EXPECT_EQ(inbox()[0]["Id"], next + 1);
  EXPECT_EQ(inbox()[1]["Id"], next + 2);
}

TEST_F(SnapshotMail, deletesFromEveryFolder) {
  device_.load(R"({"mail": {"Inbox": [{"Id": 20}, {"Id": 0}, {"Id": 21}], "Drafts": [{"Id": 20}]}})");
  device_.load(R"({"deleted": [20, 0]})");
  ASSERT_EQ(inbox().size(), 1U);
  EXPECT_EQ(inbox()[0]["Id"], 21);
  EXPECT_TRUE(device_.dump()["mail"]["Drafts"].empty());
  EXPECT_EQ(device_.refusal(R"({"deleted": [20]})"), "deleted[0]: no object has this identifier");
  // The identifier is free again.
  device_.load(R"({"tasks": [{"Oid": 20}]})");
}

TEST_F(SnapshotMail, endsABodyAtItsFirstNul) {
  device_.load(inFolder("Inbox", R"({"Id": 20, "Body": "x"})"));
  Mailbox& mailbox = device_.device().messaging.mailbox();
  const auto message = mailbox.find(MailFolder::Inbox, 20);
  const char16_t body[] = u"Text\0tail";
  mailbox.contents().write(*message->body, 0, {reinterpret_cast<const std::uint8_t*>(body), sizeof body});
  EXPECT_EQ(first()["Body"], "Text");
  // Half a character at the end is none.
  mailbox.contents().clear(*message->body);
  mailbox.contents().write(*message->body, 0, {reinterpret_cast<const std::uint8_t*>(body), 7});
  EXPECT_EQ(first()["Body"], "Tex");
  EXPECT_EQ(reload(device_.dumpText()), device_.dumpText());
}

TEST_F(SnapshotMail, carriesTextsThatAreNoWellFormedCharacters) {
  const std::string lone = R"({"utf16": "ANg="})";
  device_.load(inFolder("Inbox", R"({"Id": 20, "Subject": )" + lone + R"(, "To": [)" + lone +
                                     R"(], "Body": )" + lone + R"(, "Attachments": [{"Name": )" + lone +
                                     "}]}"));
  EXPECT_EQ(first()["Subject"], Json::parse(lone));
  EXPECT_EQ(first()["Body"], Json::parse(lone));
  EXPECT_EQ(reload(device_.dumpText()), device_.dumpText());
}

TEST_F(SnapshotMail, carriesLongBodiesAndAttachments) {
  const std::string body(50000, 'b');
  std::string data;
  for (int i = 0; i < 20000; ++i) data += "AAEC";
  device_.load(inFolder("Inbox", R"({"Id": 20, "Body": ")" + body +
                                     R"(", "Attachments": [{"Name": "a", "Data": ")" + data + R"("}]})"));
  EXPECT_EQ(first()["Body"], body);
  EXPECT_EQ(first()["Attachments"][0]["Data"], data);
  EXPECT_EQ(reload(device_.dumpText()), device_.dumpText());
}

}  // namespace
}  // namespace emulator::test
