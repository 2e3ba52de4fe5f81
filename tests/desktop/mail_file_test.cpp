// Mails of the mail format, read and written.
#include <cstdlib>
#include <gtest/gtest.h>

#include "desktop/item_refused.h"
#include "desktop/mail_read.h"
#include "desktop/mail_write.h"
#include "desktop/text.h"

namespace {

using namespace desktop;
using Notes = std::vector<std::string>;

class MailFile : public testing::Test {
 protected:
  MailFile() { setenv("TZ", "Europe/Berlin", 1); }

  static MailText readPart(const std::string& type, const std::string& body) {
    return readMail("From: a@x.example\nMIME-Version: 1.0\nContent-Type: " + type + "\n\n" + body);
  }
  static MailText readMultipart(const std::string& subtype, const std::vector<std::string>& parts) {
    std::string body;
    for (const std::string& part : parts) body += "--b\n" + part + "\n";
    return readPart("multipart/" + subtype + "; boundary=b", body + "--b--\n");
  }
};

TEST_F(MailFile, hasTheFieldsOfAMessage) {
  const MailText mail = readMail(
      "Date: Mon, 14 Mar 2005 14:35:10 +0000\r\nFrom: ann@x.example\r\nTo: bo@x.example, cy@x.example\r\n"
      "Cc: di@x.example\r\nBcc: ed@x.example\r\nSubject: Hi\r\nMessage-ID: "
      "<1@x.example>\r\n\r\nOne\r\nTwo\r\n");
  EXPECT_EQ(mail.uid, "1@x.example");
  EXPECT_EQ(mail.message.sender, u"ann@x.example");
  EXPECT_EQ(mail.message.to, u"bo@x.example;cy@x.example");
  EXPECT_EQ(mail.message.cc, u"di@x.example");
  EXPECT_EQ(mail.message.bcc, u"ed@x.example");
  EXPECT_EQ(mail.message.subject, u"Hi");
  EXPECT_EQ(mail.message.delivered, (LocalTime{2005, 3, 14, 15, 35, 10}));
  EXPECT_EQ(mail.message.body, u"One\r\nTwo\r\n");
  EXPECT_EQ(mail.message.folder, MailFolder::Inbox);
  EXPECT_FALSE(mail.message.isRead);
  EXPECT_TRUE(mail.notes.empty());
}

TEST_F(MailFile, withoutAHeaderOfAMailIsNone) {
  for (const char* text : {"", "no mail\n", "Note: no mail either\n\nnothing\n",
                           "\x7F"
                           "ELF\x01\x02"}) {
    EXPECT_THROW(readMail(text), ItemRefused) << text;
  }
}

TEST_F(MailFile, saysWhereTheMessageIsAndWhetherItWasRead) {
  EXPECT_EQ(readMail("From: a@x\nX-Qorv-Folder: Sent Items\n\n").message.folder, MailFolder::SentItems);
  EXPECT_EQ(readMail("From: a@x\nX-Qorv-Folder: Cellar\n\n").message.folder, MailFolder::Inbox);
  EXPECT_EQ(readMail("From: a@x\nX-Unsent: 1\n\n").message.folder, MailFolder::Drafts);
  EXPECT_TRUE(readMail("From: a@x\nStatus: RO\n\n").message.isRead);
  EXPECT_FALSE(readMail("From: a@x\nStatus: O\n\n").message.isRead);
}

TEST_F(MailFile, losesTheNamesBesideAddressesAndSaysSo) {
  const MailText mail =
      readMail("From: =?utf-8?Q?J=C3=BCrgen?= <j@x.example>\nTo: \"Lee; Ann\" <ann@x.example>\n\n");
  EXPECT_EQ(mail.message.sender, u"j@x.example");
  EXPECT_EQ(mail.message.to, u"ann@x.example");
  EXPECT_EQ(mail.notes, Notes{"the names beside its addresses are left out"});
}

TEST_F(MailFile, isReadInItsCharacterSet) {
  EXPECT_EQ(readPart("text/plain; charset=iso-8859-1", "Caf\xE9").message.body, u"Café");
  EXPECT_EQ(readPart("text/plain; charset=koi8-r", "\xF0\xD2").message.body, u"Пр");
  EXPECT_EQ(readPart("text/plain", "Caf\xC3\xA9").message.body, u"Café");
  // Neither said nor UTF-8: what Western programs sent, 0x80 being the euro's sign there.
  EXPECT_EQ(readPart("text/plain", "\x80").message.body, u"€");
}

TEST_F(MailFile, inACharacterSetThatIsNoneIsReadAsWellAsCanBe) {
  const MailText unknown = readPart("text/plain; charset=x-none", "Caf\xE9");
  EXPECT_EQ(unknown.message.body, u"Café");
  EXPECT_EQ(unknown.notes, Notes{"the character set x-none is unknown; some characters may be wrong"});
  const MailText broken = readPart("text/plain; charset=utf-8", "Caf\xE9");
  EXPECT_EQ(broken.message.body, u"Café");
  EXPECT_EQ(broken.notes, Notes{"a text is none in the character set utf-8; some characters may be wrong"});
}

TEST_F(MailFile, losesNulsInItsTextAndSaysSo) {
  const std::string text("one\0two", 7);
  const MailText mail = readPart("text/plain", text);
  EXPECT_EQ(mail.message.body, u"onetwo");
  EXPECT_EQ(mail.notes, Notes{"NULs in its text are left out"});
}

TEST_F(MailFile, ofAlternativesGivesThePlainText) {
  const MailText mail = readMultipart(
      "alternative", {"Content-Type: text/plain\n\nplain", "Content-Type: text/html\n\n<p>rich"});
  EXPECT_EQ(mail.message.body, u"plain");
  EXPECT_TRUE(mail.message.attachments.empty());
}

TEST_F(MailFile, ofAlternativesKeepsWhatIsNoTextAsAFile) {
  const MailText mail = readMultipart("alternative", {"Content-Type: text/html\n\n<p>rich",
                                                      "Content-Type: text/calendar\n\nBEGIN:VCALENDAR"});
  EXPECT_EQ(mail.message.body, u"rich\r\n");
  EXPECT_EQ(mail.notes, Notes{"its text is what its HTML form says"});
  ASSERT_EQ(mail.message.attachments.size(), 1u);
  EXPECT_EQ(mail.message.attachments[0].name, u"attachment-1.ics");
}

TEST_F(MailFile, whoseBoundaryIsMissingIsReadAsOneText) {
  EXPECT_EQ(readPart("multipart/mixed", "some text\n").message.body, u"some text\r\n");
  EXPECT_EQ(readPart("multipart/mixed; boundary=b", "other text\n").message.body, u"other text\r\n");
}

TEST_F(MailFile, saysWhichHeadersItCouldNotTake) {
  EXPECT_EQ(readMail("From: a@x.example\nDate: some day\n\n").notes,
            Notes{"its date can't be read and is left out"});
  EXPECT_EQ(readMail("From: a@x.example\nTo: \"a;b\"@x.example\n\n").notes,
            Notes{"its To has what is no address for the device"});
  EXPECT_EQ(readMail("From: a@x.example\nCc: \"a;b\"@x.example, c@x.example\n\n").notes,
            Notes{"its Cc has what is no address for the device"});
  EXPECT_TRUE(readMail("From: a@x.example\nTo: undisclosed-recipients:;\nCc:\n\n").notes.empty());
}

TEST_F(MailFile, mayEndItsLinesWithACarriageReturnAlone) {
  const MailText mail = readMail("From: a@x.example\rSubject: old\r\rone\rtwo");
  EXPECT_EQ(mail.message.subject, u"old");
  EXPECT_EQ(mail.message.body, u"one\r\ntwo");
}

TEST_F(MailFile, joinsTextsOneAfterAnother) {
  const MailText mail = readMultipart("mixed", {"Content-Type: text/plain\n\none", "\ntwo"});
  EXPECT_EQ(mail.message.body, u"one\r\n\r\ntwo");
}

TEST_F(MailFile, hasNamedTextsAndEmbeddedMailsAsFiles) {
  const MailText mail = readMultipart(
      "mixed", {"\nbody", "Content-Type: text/plain; name=a.txt\n\nfile",
                "Content-Type: message/rfc822\n\nFrom: c@x.example\nSubject: inner\n\ninner text",
                "Content-Disposition: attachment\nContent-Type: text/plain\n\nunnamed"});
  EXPECT_EQ(mail.message.body, u"body");
  ASSERT_EQ(mail.message.attachments.size(), 3u);
  EXPECT_EQ(mail.message.attachments[0].name, u"a.txt");
  EXPECT_EQ(mail.message.attachments[0].data, (Bytes{'f', 'i', 'l', 'e'}));
  EXPECT_EQ(mail.message.attachments[1].name, u"attachment-2.eml");
  const Bytes& inner = mail.message.attachments[1].data;
  EXPECT_NE(std::string(inner.begin(), inner.end()).find("Subject: inner"), std::string::npos);
  EXPECT_EQ(mail.message.attachments[2].name, u"attachment-3");
}

TEST_F(MailFile, givesItsFilesNamesThatTheDeviceCanHave) {
  const std::string longName(300, 'n');
  const MailText mail =
      readMultipart("mixed", {"Content-Disposition: attachment; filename=\"../a:b.txt\"\n\n1",
                              "Content-Disposition: attachment; filename=\"" + longName + ".txt\"\n\n2"});
  ASSERT_EQ(mail.message.attachments.size(), 2u);
  EXPECT_EQ(mail.message.attachments[0].name, u".._a_b.txt");
  EXPECT_EQ(mail.message.attachments[1].name, std::u16string(255, u'n') + u".txt");
  EXPECT_EQ(mail.notes.size(), 2u);
  EXPECT_EQ(mail.notes.front(), "the attachment's name on the device is \".._a_b.txt\"");
}

TEST_F(MailFile, ofAMessageIsASmallMail) {
  Message message;
  message.folder = MailFolder::SentItems;
  message.isRead = true;
  message.sender = u"ann@x.example";
  message.to = u"bo@x.example; cy@x.example";
  message.subject = u"Hi";
  message.delivered = {2005, 7, 14, 14, 35, 10};
  message.body = u"One\r\nTwo = 2\r\n";
  // July is summer time in Berlin; "=" is what quoted-printable quotes with.
  EXPECT_EQ(mailText(message, "message-20@PDA"),
            "Date: Thu, 14 Jul 2005 14:35:10 +0200\nFrom: ann@x.example\nSubject: Hi\n"
            "To: bo@x.example, cy@x.example\nMessage-Id: <message-20@PDA>\nStatus: RO\n"
            "X-Qorv-Folder: Sent Items\nMIME-Version: 1.0\nContent-Type: text/plain; charset=utf-8\n"
            "Content-Transfer-Encoding: quoted-printable\n\nOne\nTwo =3D 2\n");
}

Message richMessage() {
  Message message;
  message.folder = MailFolder::Drafts;
  message.sender = u"ann@x.example";
  message.to = u"bo@x.example;the whole team";
  message.cc = u"cy@x.example";
  message.bcc = u"di@x.example";
  message.subject = u"Grüße – 日本語 \U0001F600";
  message.delivered = {2005, 1, 14, 14, 35, 10};
  message.body = u"Line one\r\n.\r\nFrom here\r\n  trailing  \r\n日本 = \U0001F600";
  message.attachments = {{u"Übersicht.bin", {0, 1, 2, 255, 13, 10}, {}}, {u"empty", {}, {}}};
  return message;
}

TEST_F(MailFile, bringsBackEveryFieldThatAMessageHas) {
  const Message sent = richMessage();
  const MailText mail = readMail(mailText(sent, "message-20@PDA"));
  EXPECT_EQ(mail.uid, "message-20@PDA");
  EXPECT_EQ(mail.message.folder, sent.folder);
  EXPECT_EQ(mail.message.sender, sent.sender);
  EXPECT_EQ(mail.message.to, sent.to);
  EXPECT_EQ(mail.message.cc, sent.cc);
  EXPECT_EQ(mail.message.bcc, sent.bcc);
  EXPECT_EQ(mail.message.subject, sent.subject);
  EXPECT_EQ(mail.message.delivered, sent.delivered);
  EXPECT_EQ(mail.message.body, sent.body);
  ASSERT_EQ(mail.message.attachments.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(mail.message.attachments[i].name, sent.attachments[i].name);
    EXPECT_EQ(mail.message.attachments[i].data, sent.attachments[i].data);
  }
  EXPECT_TRUE(mail.notes.empty());
}

TEST_F(MailFile, hasNoLineThatEndsItsPartEarly) {
  Message message = richMessage();
  message.body = u"--=_qorv--\r\n--=_qorv\r\n";
  EXPECT_EQ(readMail(mailText(message, "1@x")).message.body, message.body);
}

TEST_F(MailFile, bringsBackTextsWhateverTheirEnd) {
  for (const char16_t* body : {u"", u"a", u"a\r\n", u"a\r\n\r\n", u" ", u"=", u"\t"}) {
    Message message;
    message.sender = u"a@x";
    message.body = body;
    EXPECT_EQ(readMail(mailText(message, "1@x")).message.body, body) << toUtf8(body);
  }
}

TEST_F(MailFile, namesTheMeetingThatTheMessageIsAbout) {
  Message message;
  message.hasPlace = true;
  message.place = u"Room 4";
  message.start = {2005, 3, 14, 9, 0, 0};
  message.end = {2005, 3, 14, 9, 15, 0};
  const std::string text = mailText(message, "1@x");
  EXPECT_NE(
      text.find("\nX-Qorv-Place: Room 4\nX-Qorv-Start: 2005-03-14 09:00\nX-Qorv-End: 2005-03-14 09:15\n"),
      std::string::npos)
      << text;
}

TEST_F(MailFile, withTextsOfAnyKindIsWrittenAlikeTwice) {
  Message message = richMessage();
  message.sender = u"\xD800 ; <>,:\"\\ \x1F";
  message.subject = u"a\r\nBcc: x@x\r\n\r\nbody";
  const std::string text = mailText(message, "1@x");
  EXPECT_EQ(text, mailText(message, "1@x"));
  EXPECT_EQ(readMail(text).message.subject, u"a Bcc: x@x  body");
}

}  // namespace
