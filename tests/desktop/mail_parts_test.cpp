// What mails are made of, without the mail format: lists of addresses, mailboxes, names in a Maildir, HTML.
#include <gtest/gtest.h>

#include "desktop/html_text.h"
#include "desktop/mail_folder.h"
#include "desktop/mail_recipients.h"
#include "desktop/maildir_name.h"
#include "desktop/mbox.h"
#include "tests/desktop/temporary_folder.h"

namespace {

using namespace desktop;

std::vector<std::string> spelled(const std::vector<MimeAddress>& addresses) {
  std::vector<std::string> texts;
  for (const MimeAddress& address : addresses) texts.push_back(address.name + "|" + address.address);
  return texts;
}

using Texts = std::vector<std::string>;

TEST(MailRecipients, ofTheDeviceStandBetweenSemicolons) {
  EXPECT_EQ(spelled(addressesOfList(u"ann@x.example;  bo@x.example ;;cy@x.example")),
            (Texts{"|ann@x.example", "|bo@x.example", "|cy@x.example"}));
}

TEST(MailRecipients, withNamesAreUnderstood) {
  EXPECT_EQ(spelled(addressesOfList(u"Ann Lee <ann@x.example>")), Texts{"Ann Lee|ann@x.example"});
}

TEST(MailRecipients, thatAreNoAddressesStayTexts) {
  EXPECT_EQ(listOfAddresses(addressesOfList(u"the whole team")), u"the whole team");
}

TEST(MailRecipients, goToTheDeviceWithoutNames) {
  EXPECT_EQ(listOfAddresses({{"Ann; Lee", "ann@x.example"}, {"", "b;o@x.example"}, {"", ""}}),
            u"ann@x.example");
  EXPECT_EQ(listOfAddresses({{"undisclosed-recipients", ""}, {"the team", ""}}), u"the team");
}

TEST(Mbox, hasAMailBehindEachFromLine) {
  const auto entries =
      entriesOfMbox("From a@x Mon 9:00\nSubject: 1\n\none\n\nFrom b@x Tue 9:00\nSubject: 2\n\ntwo");
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].text, "Subject: 1\n\none\n");
  EXPECT_EQ(entries[0].line, 1u);
  EXPECT_EQ(entries[1].text, "Subject: 2\n\ntwo");
  EXPECT_EQ(entries[1].line, 6u);
}

TEST(Mbox, takesAFromWithinATextForText) {
  const auto entries =
      entriesOfMbox("From a@x Mon 9:00\nSubject: 1\n\none\n\nFrom here on\n>From there\n>>From afar\n>no\n");
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].text, "Subject: 1\n\none\n\nFrom here on\nFrom there\n>From afar\n>no\n");
}

TEST(Mbox, needNotHaveMails) {
  EXPECT_TRUE(entriesOfMbox("").empty());
  EXPECT_TRUE(entriesOfMbox("\n\nSubject: none\n").empty());
}

TEST(MaildirName, hasFlagsBehindItsBase) {
  const MaildirName name = parseMaildirName("mail/cur/1.2.host:2,FS");
  EXPECT_EQ(name.base, "1.2.host");
  EXPECT_TRUE(name.has(kSeenFlag));
  EXPECT_FALSE(name.has(kDraftFlag));
  EXPECT_EQ(parseMaildirName("mail/new/1.2.host").base, "1.2.host");
  EXPECT_EQ(parseMaildirName("mail/new/1.2.host").flags, "");
}

TEST(MaildirName, isSpelledWithItsFlagsInOrder) {
  EXPECT_EQ(spellMaildirName({"a", "SDF"}), "a:2,DFS");
}

class MaildirPlace : public testing::Test {
 protected:
  std::filesystem::path file(const std::string& name) {
    const std::filesystem::path path = folder_.path() / name;
    const std::filesystem::path maildir = path.parent_path().parent_path();
    for (const char* place : {"cur", "new", "tmp"}) std::filesystem::create_directories(maildir / place);
    return path;
  }

  TemporaryFolder folder_;
};

TEST_F(MaildirPlace, tellsTheDevicesFolder) {
  const auto inbox = file("mail/cur/a");
  EXPECT_TRUE(isMaildirFile(inbox));
  EXPECT_EQ(folderOfMaildirFile(inbox), MailFolder::Inbox);
  EXPECT_EQ(folderOfMaildirFile(file("mail/.Sent/cur/a")), MailFolder::SentItems);
  EXPECT_EQ(folderOfMaildirFile(file("mail/.Sent Items/cur/a")), MailFolder::SentItems);
  EXPECT_EQ(folderOfMaildirFile(file("mail/.Drafts/new/a")), MailFolder::Drafts);
  EXPECT_EQ(folderOfMaildirFile(file("mail/.Outbox/new/a")), MailFolder::Outbox);
  EXPECT_EQ(folderOfMaildirFile(file("mail/.Chess/new/a")), std::nullopt);
}

TEST_F(MaildirPlace, isOneOnlyBetweenItsLike) {
  EXPECT_FALSE(isMaildirFile(folder_.path() / "cur" / "a"));
  EXPECT_FALSE(isMaildirFile(file("mail/tmp/a")));
  EXPECT_FALSE(isMaildirFile(file("mail/cur/.hidden")));
  // A Maildir may lie in a folder that is hidden and none of a Maildir's.
  EXPECT_EQ(folderOfMaildirFile(file(".mail/cur/a")), MailFolder::Inbox);
}

TEST_F(MaildirPlace, ofWhatIsThrownAwayIsKnown) {
  EXPECT_TRUE(isDiscarded(file("mail/cur/a:2,ST")));
  EXPECT_TRUE(isDiscarded(file("mail/.Trash/cur/a:2,S")));
  EXPECT_FALSE(isDiscarded(file("mail/cur/a:2,S")));
}

TEST(HtmlText, hasItsParagraphsAsLines) {
  EXPECT_EQ(
      textOfHtml(
          "<html><head><title>no</title></head><body><h1>One</h1><p>two\n  words</p>three<br>four</body>"),
      "One\n\ntwo words\n\nthree\nfour\n");
}

TEST(HtmlText, hasListsAndTablesLineByLine) {
  EXPECT_EQ(textOfHtml("<ul><li>a<li>b &amp; c</ul><table><tr><td>1<td>2<tr><td>3</table>"),
            "- a\n- b & c\n1 2\n3\n");
}

TEST(HtmlText, leavesOutWhatIsNotShown) {
  EXPECT_EQ(textOfHtml("<style>p {}</style><script>alert(1)</script>seen<!-- not -->"), "seen\n");
  EXPECT_EQ(textOfHtml(""), "");
}

}  // namespace
