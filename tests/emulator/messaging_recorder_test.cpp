// What is recorded of messages that change.
#include "tests/emulator/messaging_test.h"
#include "tests/emulator/recorder_test.h"

namespace emulator::test {
namespace {

constexpr std::u16string_view kMailLog = u"\\QorvMailLog";

class MessagingRecorder : public RecorderTest {
 protected:
  Mailbox& mailbox() { return device().messaging.mailbox(); }
};

TEST_F(MessagingRecorder, hasALogOfMailUnderTheMessagesIdentifier) {
  loadSnapshot(device(),
               R"({"mail": {"Inbox": [{"Id": 3000000000, "Subject": "Hi", "Body": "Text", "To": ["a"],
                                                 "Attachments": [{"Name": "a", "Data": ""}]}, {"Id": 0}]}})");
  EXPECT_EQ(log(kMailLog), (std::vector<Logged>{{0, 2, 1}, {3000000000, 1, 1}}));
  EXPECT_EQ(counter(kMailLog), 2u);
  loadSnapshot(device(), R"({"mail": {"Inbox": [{"Id": 3000000000, "Read": true}]}, "deleted": [0]})");
  EXPECT_EQ(log(kMailLog), (std::vector<Logged>{{0, 4, 3}, {3000000000, 3, 2}}));
}

TEST_F(MessagingRecorder, takesAnIdentifierInTwoFoldersForOneItem) {
  mailbox().add(MailFolder::Inbox, 20);
  device().commit();
  mailbox().add(MailFolder::Drafts, 20);
  EXPECT_EQ(log(kMailLog), (std::vector<Logged>{{20, 2, 2}}));
  device().commit();
  mailbox().remove(MailFolder::Inbox, 20);
  EXPECT_EQ(log(kMailLog), (std::vector<Logged>{{20, 3, 2}}));
  device().commit();
  mailbox().remove(MailFolder::Drafts, 20);
  EXPECT_EQ(log(kMailLog), (std::vector<Logged>{{20, 4, 3}}));
}

TEST_F(MessagingRecorder, recordsEveryKindOfChange) {
  const MailMessage message = mailbox().add(MailFolder::Inbox);
  const MailAttachment attachment = mailbox().addAttachment(message);
  const std::vector<std::function<void()>> changes{
      [&] { mailbox().update(message); },
      [&] {
        mailbox().setRecipients(message, {{MAPI_TO, u"a"}});
      },
      [&] { mailbox().nameAttachment(attachment, u"a"); },
      [&] { mailbox().addAttachment(message); },
      [&] { mailbox().removeAttachment(attachment); },
      [&] { mailbox().noteChange(message.row); },
  };
  device().commit();
  DWORD sequence = 1;
  for (const auto& change : changes) {
    change();
    EXPECT_EQ(log(kMailLog), (std::vector<Logged>{{message.id, ++sequence, 2}}));
    device().commit();
  }
}

TEST_F(MessagingRecorder, isKeptOut) {
  device().stopRecording();
  mailbox().add(MailFolder::Inbox);
  EXPECT_FALSE(device().registry.get(kRoot, kMailLog));
}

class MessagingChangesTest : public MessagingTest {};

TEST_F(MessagingChangesTest, areHeardOfAProgramsMessages) {
  std::vector<ItemChangeKind> heard;
  device().messaging.mailbox().setListener([&](const ItemChange& change) {
    EXPECT_EQ(change.kind, ObjectKind::Message);
    heard.push_back(change.change);
  });
  using enum ItemChangeKind;
  ComReference<IMessage> made;
  ASSERT_EQ(folder(PR_CE_IPM_INBOX_ENTRYID)->CreateMessage(nullptr, 0, made.out()), S_OK);
  EXPECT_EQ(heard, std::vector{Added});
  // One change for the body that goes, and one for what is written, however many writes.
  auto body = stream(*made.get(), PR_BODY_W, MAPI_CREATE | MAPI_MODIFY);
  write(*body.get(), "a");
  write(*body.get(), "b");
  EXPECT_EQ(heard, (std::vector{Added, Changed, Changed}));
  EntryBytes id = entryProperty(*made.get(), PR_ENTRYID);
  SBinary entry{20, id.data()};
  ENTRYLIST list{1, &entry};
  EXPECT_EQ(folder(PR_CE_IPM_INBOX_ENTRYID)->DeleteMessages(&list, 0, nullptr, 0), S_OK);
  EXPECT_EQ(heard, (std::vector{Added, Changed, Changed, Deleted}));
}

}  // namespace
}  // namespace emulator::test
