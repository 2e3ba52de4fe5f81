#include "desktop/message_record.h"

#include <gtest/gtest.h>

#include "desktop/device_error.h"
#include "desktop/item_kind.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// 14 March 2005, a Monday, 14:35:10.
const Bytes kTime = u16(2005) + u16(3) + u16(1) + u16(14) + u16(14) + u16(35) + u16(10) + u16(0);
constexpr LocalTime kMoment{2005, 3, 14, 14, 35, 10};
constexpr std::uint32_t kOid = 0x01000021;
const Bytes kHeader = hex("01 00 21 00 00 01");

Bytes sentField(std::uint32_t tag, std::u16string_view text) {
  return u32(tag) + sentText(text);
}

Bytes deviceField(std::uint32_t tag, std::u16string_view text) {
  return u32(tag) + deviceText(text);
}

/// The one record that a message is.
Bytes record(const Message& mail, bool isThere) {
  const std::vector<Bytes> records = messageRecords(mail, isThere);
  EXPECT_EQ(records.size(), 1u);
  return records.front();
}

Message message() {
  Message mail;
  mail.sender = u"ann@x";
  mail.to = u"bo@x;cy@x";
  mail.subject = u"Hi";
  mail.delivered = kMoment;
  mail.body = u"Text";
  return mail;
}

TEST(MessageRecord, beginsWithTheNumberOfFieldsAndTheFolder) {
  const Bytes expected = u32(5) + u32(0) + u32(0xFE) + sentField(1, u"ann@x") + sentField(2, u"bo@x;cy@x") +
                         sentField(5, u"Hi") + u32(6) + kTime + sentField(7, u"Text");
  EXPECT_EQ(record(message(), false), expected);
}

TEST(MessageRecord, saysInItsFolderWhetherItWasRead) {
  Message mail;
  mail.folder = MailFolder::Drafts;
  mail.isRead = true;
  // Bit 22 for the drafts, bit 20 for what was read.
  EXPECT_EQ(record(mail, false), u32(0) + u32(0) + u32(0x00500000));
}

TEST(MessageRecord, hasAToThatIsEmptyBesideABccAlone) {
  Message mail;
  mail.bcc = u"di@x";
  EXPECT_EQ(record(mail, false), u32(2) + u32(0) + u32(0xFE) + sentField(2, u"") + sentField(4, u"di@x"));
}

TEST(MessageRecord, ofAMessageThatIsThereLeavesOutWhatTheDeviceWouldAddAgain) {
  Message mail = message();
  mail.attachments = {{u"a", {}, u"\\a"}};
  mail.delivered = {};
  EXPECT_EQ(record(mail, true), u32(3) + u32(0) + u32(0xFE) + sentField(1, u"ann@x") + sentField(5, u"Hi") +
                                    sentField(7, u"Text"));
}

TEST(MessageRecord, endsWithTheAttachments) {
  Message mail;
  mail.attachments = {{u"a", {}, u"\\b"}};
  EXPECT_EQ(record(mail, false), u32(1) + u32(0) + u32(0xFE) + sentField(8, u"1 2 \\b1 a"));
}

TEST(MessageRecord, isReadWithAllItsFields) {
  const Bytes record = kHeader + hex("0C") + u32(6) + kTime + deviceField(5, u"Hi") + u32(11) +
                       u32(0x001000FC) + deviceField(1, u"ann@x") + u32(16) + kTime + u32(17) + kTime +
                       deviceField(15, u"Room") + u32(14) + u32(1) + deviceField(7, u"Text") +
                       deviceField(2, u"bo@x") + deviceField(3, u"cy@x") +
                       deviceField(8, u"\\Temp\\QRV1.TMP\na.txt\n");
  WireReader reader(record);
  const Message mail = readMessage(reader, kOid);
  EXPECT_EQ(reader.left(), 0u);
  EXPECT_EQ(mail.oid, kOid);
  EXPECT_EQ(mail.folder, MailFolder::SentItems);
  EXPECT_TRUE(mail.isRead);
  EXPECT_EQ(mail.sender, u"ann@x");
  EXPECT_EQ(mail.to, u"bo@x");
  EXPECT_EQ(mail.cc, u"cy@x");
  EXPECT_EQ(mail.bcc, u"");
  EXPECT_EQ(mail.subject, u"Hi");
  EXPECT_EQ(mail.delivered, kMoment);
  EXPECT_EQ(mail.body, u"Text");
  EXPECT_TRUE(mail.hasPlace);
  EXPECT_EQ(mail.place, u"Room");
  EXPECT_EQ(mail.start, kMoment);
  EXPECT_EQ(mail.end, kMoment);
  ASSERT_EQ(mail.attachments.size(), 1u);
  EXPECT_EQ(mail.attachments[0].path, u"\\Temp\\QRV1.TMP");
}

TEST(MessageRecord, needNotHaveMoreThanTheFlagOfThePlace) {
  const Bytes record = kHeader + hex("01") + u32(14) + u32(0);
  WireReader reader(record);
  const Message mail = readMessage(reader, kOid);
  EXPECT_FALSE(mail.hasPlace);
  EXPECT_EQ(mail.body, u"");
}

TEST(MessageRecord, ofAnUnknownFolderIsInNone) {
  const Bytes record = kHeader + hex("01") + u32(11) + u32(0);
  WireReader reader(record);
  EXPECT_EQ(readMessage(reader, kOid).folder, MailFolder::None);
}

TEST(MessageRecord, withAFieldThatNoMessageHasIsRefused) {
  const Bytes record = kHeader + hex("01") + u32(12) + u32(0);
  WireReader reader(record);
  EXPECT_THROW(readMessage(reader, kOid), ProtocolError);
}

TEST(MessageRecord, thatIsAnotherMessagesIsRefused) {
  const Bytes record = kHeader + hex("01") + u32(14) + u32(0);
  WireReader reader(record);
  EXPECT_THROW(readMessage(reader, kOid + 1), ProtocolError);
}

TEST(MessageRecord, cutShortNamesTheAttachmentsThatItHas) {
  const Bytes files = deviceField(8, u"\\Temp\\QRV1.TMP\na.txt\n");
  const Bytes whole = kHeader + hex("03") + u32(14) + u32(0) + files;
  ASSERT_EQ(readAttachments(WireReader(whole)).size(), 1u);
  EXPECT_EQ(readAttachments(WireReader(whole))[0].path, u"\\Temp\\QRV1.TMP");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_TRUE(readAttachments(WireReader(BytesView(whole).first(size))).empty()) << size;
  }
}

TEST(MessageRecord, ofACarrierHasNothingButItsFiles) {
  EXPECT_EQ(carrierRecord({u"\\t"}), u32(1) + u32(0) + u32(0x00500000) + sentField(8, u"1 2 \\t1 x"));
}

}  // namespace
