#include "desktop/item_writer.h"

#include "desktop/device_error.h"
#include "tests/desktop/scripted_stream.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

/// Result, status 0, OID, reference.
Bytes answer(int result, std::uint32_t oid, std::uint32_t reference) {
  return Bytes{static_cast<std::uint8_t>(result), 0} + u32(oid) + u32(reference);
}

class ItemWriter : public ScriptedSession {
 protected:
  /// The answers, spelled as "18 0 x": written, accepted without an item, refused.
  std::string write(const std::vector<ItemWrite>& writes) {
    std::string seen;
    for (const WriteAnswer& given : writeItems(session(), ItemType::Appointment, writes)) {
      seen += given.accepted ? std::to_string(given.oid) + " " : "x ";
    }
    return seen;
  }
};

TEST_F(ItemWriter, writesABatchOfAddsAndChanges) {
  // Command 15, type 2, two entries: add (2) of type 2 with reference 1; change (3) of type 2 of item 0x13.
  script->expect(hex("0F 02 02 00 00 00"
                     "02 02 01 00 00 00 AA BB"
                     "03 02 13 00 00 00 CC"),
                 hex("01 00 12 00 00 00 01 00 00 00"
                     "01 00 13 00 00 00 13 00 00 00"));
  EXPECT_EQ(write({{0, hex("AA BB")}, {19, hex("CC")}}), "18 19 ");
}

TEST_F(ItemWriter, asksForNothingWhenThereIsNothingToWrite) {
  EXPECT_EQ(write({}), "");
}

TEST_F(ItemWriter, tellsAnAddThatTheDeviceCouldNotSave) {
  script->expect(hex("0F 02 01 00 00 00 02 02 01 00 00 00 AA"), answer(1, 0, 1));
  EXPECT_EQ(write({{0, hex("AA")}}), "0 ");
}

TEST_F(ItemWriter, sendsTheRestOneByOneAfterAnItemThatCouldNotBeHad) {
  // The device stops at the change of the unknown item 99: 0, 3 after the first answer.
  script->expect(hex("0F 02 03 00 00 00") + hex("02 02 01 00 00 00 AA") + hex("03 02 63 00 00 00 BB") +
                     hex("02 02 03 00 00 00 CC"),
                 answer(1, 18, 1) + hex("00 03"));
  // Command 3 of item 99: the failed lookup leaves both numbers 0. Ten unused bytes follow.
  script->expect(hex("03 02 63 00 00 00 BB"), hex("00 03 00 00 00 00 00 00 00 00") + zeros(10));
  script->expect(hex("02 02 01 00 00 00 CC"), answer(1, 20, 1) + zeros(10));
  EXPECT_EQ(write({{0, hex("AA")}, {99, hex("BB")}, {0, hex("CC")}}), "18 x 20 ");
}

TEST_F(ItemWriter, readsOnlyTheFirstTenBytesOfASingleAnswer) {
  script->expect(hex("0F 02 01 00 00 00 02 02 01 00 00 00 AA"), hex("00 03"));
  script->expect(hex("02 02 01 00 00 00 AA"), answer(0, 0, 1));
  EXPECT_EQ(write({{0, hex("AA")}}), "x ");
}

TEST_F(ItemWriter, sends64WritesAtATime) {
  Bytes entries;
  Bytes answers;
  for (std::uint32_t i = 1; i <= 64; ++i) {
    entries = entries + hex("02 02") + u32(i) + hex("AA");
    answers = answers + answer(1, 100 + i, i);
  }
  script->expect(hex("0F 02 40 00 00 00") + entries, answers);
  script->expect(hex("0F 02 01 00 00 00 02 02 01 00 00 00 AA"), answer(1, 200, 1));
  EXPECT_TRUE(write(std::vector<ItemWrite>(65, {0, hex("AA")})).ends_with("164 200 "));
}

TEST_F(ItemWriter, keepsABatchOfLongRecordsSmall) {
  const Bytes longRecord(200 * 1024, 0xAA);
  for (int i = 0; i < 2; ++i) {
    script->expect(hex("0F 02 01 00 00 00 02 02 01 00 00 00") + longRecord, answer(1, 18, 1));
  }
  EXPECT_EQ(write({{0, longRecord}, {0, longRecord}}), "18 18 ");
}

TEST_F(ItemWriter, refusesAnswersOfAnotherLength) {
  const auto request = hex("0F 02 01 00 00 00 02 02 01 00 00 00 AA");
  for (const auto& reply : {hex(""), hex("01"), answer(1, 18, 1) + hex("00"), answer(1, 18, 1) + hex("00 03"),
                            answer(1, 18, 1) + answer(1, 19, 1), Bytes(9)}) {
    script->expect(request, reply);
    EXPECT_THROW(write({{0, hex("AA")}}), ProtocolError) << reply.size() << " bytes";
  }
}

TEST_F(ItemWriter, refusesAnAnswerAboutAnotherItem) {
  script->expect(hex("0F 02 01 00 00 00 03 02 13 00 00 00 AA"), answer(1, 20, 20));
  EXPECT_THROW(write({{19, hex("AA")}}), ProtocolError);
}

TEST_F(ItemWriter, deletesItemsAndTellsWhichAreGone) {
  script->expect(hex("11 02 02 00 00 00  12 00 00 00  63 00 00 00"), hex("12 00 00 00"));
  const std::vector<std::uint32_t> oids{18, 99};
  EXPECT_EQ(deleteItems(session(), ItemType::Appointment, oids), std::vector<std::uint32_t>{18});
}

TEST_F(ItemWriter, refusesToHaveDeletedWhatItWasNotTold) {
  const std::vector<std::uint32_t> oids{18};
  script->expect(hex("11 02 01 00 00 00  12 00 00 00"), hex("13 00 00 00"));
  EXPECT_THROW(deleteItems(session(), ItemType::Appointment, oids), ProtocolError);
  script->expect(hex("11 02 01 00 00 00  12 00 00 00"), hex("12 00 00"));
  EXPECT_THROW(deleteItems(session(), ItemType::Appointment, oids), ProtocolError);
}

}  // namespace
