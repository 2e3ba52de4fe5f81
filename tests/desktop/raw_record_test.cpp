#include "desktop/raw_record.h"

#include <gmock/gmock.h>

#include "desktop/device_error.h"
#include "desktop/item_kind.h"
#include "tests/desktop/scripted_stream.h"

namespace {

using namespace desktop;
using namespace wire_bytes;
using testing::ElementsAre;

/// Name, value, offset and size of each part.
std::vector<std::string> spelled(const RawParts& taken) {
  std::vector<std::string> lines;
  for (const RawPart& part : taken.parts) {
    lines.push_back(std::to_string(part.offset) + "+" + std::to_string(part.bytes.size()) + " " + part.name +
                    (part.value.empty() ? "" : " = " + part.value));
  }
  return lines;
}

// 14 March 2005, a Monday.
const Bytes kMonday = hex("D5 07 03 00 01 00 0E 00  00 00 00 00 00 00 00 00");

TEST(RawRecord, namesEveryField) {
  // Header of 7; a time of 4 + 16; a text of 4 + 4 + 6; a number of 4 + 4.
  const Bytes record =
      hex("01 00 13 00 00 00 03") + u32(3) + kMonday + u32(1) + deviceText(u"Hi") + u32(5) + u32(2);
  const RawParts taken = takeApart(record, kTaskKind.layouts);
  EXPECT_EQ(taken.fault, "");
  EXPECT_THAT(spelled(taken), ElementsAre("0+1 result = 1", "1+1 status = 0", "2+4 OID = 19",
                                          "6+1 fields = 3", "7+20 start (tag 3) = 2005-03-14 00:00",
                                          "27+14 subject (tag 1) = \"Hi\"", "41+8 importance (tag 5) = 2"));
}

TEST(RawRecord, namesTheExceptionsOfASeries) {
  // Weekly on Mondays for ever, with one exception: a deleted occurrence without texts.
  const Bytes block =
      kMonday + zeros(48) + hex("01  00 00 00 00  03  00 00 00 00") + u32(1) + u32(2) + zeros(12) + u32(1);
  const Bytes exception = kMonday + zeros(32) + u32(1) + Bytes(16, 0xFF) + zeros(12);
  const Bytes record = hex("01 00 12 00 00 00 01") + u32(19) + block + exception;
  const RawParts taken = takeApart(record, kAppointmentKind.layouts);
  EXPECT_EQ(taken.fault, "");
  EXPECT_THAT(spelled(taken),
              ElementsAre("0+1 result = 1", "1+1 status = 0", "2+4 OID = 18", "6+1 fields = 1",
                          "7+102 repetition (tag 19) = weekly", "109+80 exception 1 = 2005-03-14"));
}

TEST(RawRecord, givesAllBytesAlsoOfWhatMeansNothing) {
  const Bytes header = hex("01 00 13 00 00 00 02");
  const Bytes number = u32(5) + u32(2);
  struct Case {
    Bytes record;
    const char* rest;
    const char* fault;
  };
  for (const Case& broken : {
           Case{header + number + u32(8) + u32(1), "15+8 the rest", "there is no field 8"},
           Case{header + number + hex("05 00"), "15+2 the rest", "the reply ends 2 bytes too early"},
           Case{header + number + number + hex("00"), "23+1 the rest",
                "the reply goes on for 1 bytes after its end"},
           Case{hex("01 00 13"), "2+1 the rest", "the reply ends 3 bytes too early"},
       }) {
    const RawParts taken = takeApart(broken.record, kTaskKind.layouts);
    EXPECT_EQ(spelled(taken).back(), broken.rest);
    EXPECT_EQ(taken.fault, broken.fault);
    std::size_t size = 0;
    for (const RawPart& part : taken.parts) size += part.bytes.size();
    EXPECT_EQ(size, broken.record.size());
  }
}

TEST(RawRecord, ofATypeWithoutLayoutsIsAHeaderAndBytes) {
  const RawParts taken = takeApart(hex("01 00 13 00 00 00 02") + u32(5) + u32(2), {});
  EXPECT_EQ(taken.fault, "");
  EXPECT_EQ(spelled(taken).back(), "7+8 the rest");
}

class RawRecordRequest : public ScriptedSession {};

TEST_F(RawRecordRequest, asksForOneItem) {
  script->expect(hex("07 03") + u32(19), hex("01 00 13 00 00 00 00"));
  EXPECT_EQ(readRawRecord(session(), kTaskKind, 19), hex("01 00 13 00 00 00 00"));
  script->expect(hex("07 03") + u32(99), hex("00 03"));
  EXPECT_THROW(readRawRecord(session(), kTaskKind, 99), DeviceRefusal);
}

}  // namespace
