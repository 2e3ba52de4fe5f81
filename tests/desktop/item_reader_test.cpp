#include "desktop/item_reader.h"

#include "desktop/device_error.h"
#include "tests/desktop/scripted_stream.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

/// Records of these tests are a header alone: 1, 0, OID, no fields.
Bytes record(std::uint32_t oid) {
  return hex("01 00") + u32(oid) + hex("00");
}

Bytes listHeader(std::uint32_t count) {
  return hex("01 00") + u32(count) + hex("00");
}

/// Command 16, type 2, the number of items and the items.
Bytes readRequest(const std::vector<std::uint32_t>& oids) {
  Bytes request = hex("10 02") + u32(static_cast<std::uint32_t>(oids.size()));
  for (const std::uint32_t oid : oids) request = request + u32(oid);
  return request;
}

class ItemReader : public ScriptedSession {
 protected:
  /// What was read, spelled as "18 19! 20?": read, not found, too large or refused.
  std::string read(const std::vector<std::uint32_t>& oids) {
    std::string seen;
    const ItemSink sink{
        [&](WireReader& reader, std::uint32_t oid) {
          const BytesView bytes = reader.raw(7);
          EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), record(oid));
          seen += std::to_string(oid) + " ";
        },
        [&](std::uint32_t oid, ReadFailure why) {
          seen += std::to_string(oid) + (why == ReadFailure::NotFound   ? "! "
                                         : why == ReadFailure::TooLarge ? "? "
                                                                        : "- ");
        },
    };
    readItems(session(), ItemType::Appointment, oids, sink);
    return seen;
  }
};

TEST_F(ItemReader, countsItems) {
  script->expect(hex("06 01"), hex("01 00 03 00 00 00"));
  EXPECT_EQ(countItems(session(), ItemType::Contact), 3u);
}

TEST_F(ItemReader, hasNoCountOfAFolderThatTheDeviceHasNot) {
  script->expect(hex("06 04"), hex("00 03 00 00 00 00"));
  EXPECT_EQ(countItems(session(), ItemType::Mail), std::nullopt);
}

TEST_F(ItemReader, refusesACountOfAnotherLength) {
  script->expect(hex("06 01"), hex("01 00 03 00 00"));
  EXPECT_THROW(countItems(session(), ItemType::Contact), ProtocolError);
  script->expect(hex("06 01"), hex("01 00 03 00 00 00 00"));
  EXPECT_THROW(countItems(session(), ItemType::Contact), ProtocolError);
}

TEST_F(ItemReader, listsItems) {
  script->expect(hex("0D 02"), hex("01 00 02 00 00 00 00  12 00 00 00  13 00 00 00"));
  EXPECT_EQ(listItems(session(), ItemType::Appointment), (std::vector<std::uint32_t>{18, 19}));
}

TEST_F(ItemReader, listsAnEmptyFolder) {
  script->expect(hex("0D 02"), hex("01 00 00 00 00 00 00"));
  EXPECT_TRUE(listItems(session(), ItemType::Appointment).empty());
}

TEST_F(ItemReader, doesNotTakeAPartOfAListForAllOfIt) {
  script->expect(hex("0D 02"), hex("00 00 01 00 00 00 00  12 00 00 00"));
  EXPECT_THROW(listItems(session(), ItemType::Appointment), DeviceRefusal);
}

TEST_F(ItemReader, refusesAListThatIsNotAsLongAsItSays) {
  for (const auto& reply :
       {hex("01 00 02 00 00 00 00  12 00 00 00"), hex("01 00 01 00 00 00 00  12 00 00 00  13"),
        hex("01 00 FF FF FF FF 00"), hex("01 00 00 00 00 00"), hex("")}) {
    script->expect(hex("0D 02"), reply);
    EXPECT_THROW(listItems(session(), ItemType::Appointment), ProtocolError);
  }
}

TEST_F(ItemReader, readsItemsInOneBatch) {
  script->expect(readRequest({18, 19}), listHeader(2) + record(18) + record(19));
  EXPECT_EQ(read({18, 19}), "18 19 ");
}

TEST_F(ItemReader, asksForNothingWhenThereIsNothingToRead) {
  EXPECT_EQ(read({}), "");
}

TEST_F(ItemReader, asksAgainFromTheItemAtWhichTheReplyWasFull) {
  // The third record is in the reply up to the text that had no room, but isn't counted.
  script->expect(readRequest({18, 19, 20, 21}),
                 listHeader(2) + record(18) + record(19) + hex("01 00 00 00 00 00 00 10 00"));
  script->expect(readRequest({20, 21}), listHeader(2) + record(20) + record(21));
  EXPECT_EQ(read({18, 19, 20, 21}), "18 19 20 21 ");
}

TEST_F(ItemReader, closesInOnAnUnknownItem) {
  // The records in front of the unknown item stay in the reply, uncounted; seven unused bytes end it.
  script->expect(readRequest({18, 19, 99, 21}), listHeader(0) + record(18) + record(19) + zeros(7));
  script->expect(readRequest({18, 19}), listHeader(2) + record(18) + record(19));
  script->expect(readRequest({99, 21}), listHeader(0) + zeros(7));
  script->expect(readRequest({99}), listHeader(0) + zeros(7));
  script->expect(readRequest({21}), listHeader(1) + record(21));
  EXPECT_EQ(read({18, 19, 99, 21}), "18 19 99! 21 ");
}

TEST_F(ItemReader, leavesOutAnItemThatNoReplyCanHold) {
  const auto cutRecord = record(50) + u32(1) + u32(0);
  script->expect(readRequest({50, 51}), listHeader(0) + cutRecord);
  script->expect(readRequest({50}), listHeader(0) + cutRecord);
  script->expect(readRequest({51}), listHeader(1) + record(51));
  EXPECT_EQ(read({50, 51}), "50? 51 ");
}

TEST_F(ItemReader, takesAListWithResultZeroForNone) {
  script->expect(readRequest({50}), hex("00 00 01 00 00 00 00") + record(50));
  EXPECT_EQ(read({50}), "50- ");
}

TEST_F(ItemReader, asksFor128ItemsAtATime) {
  std::vector<std::uint32_t> oids(130);
  for (std::uint32_t i = 0; i < oids.size(); ++i) oids[i] = i + 1;
  Bytes records;
  for (std::uint32_t i = 1; i <= 128; ++i) records = records + record(i);
  script->expect(readRequest({oids.begin(), oids.begin() + 128}), listHeader(128) + records);
  script->expect(readRequest({129, 130}), listHeader(2) + record(129) + record(130));
  EXPECT_TRUE(read(oids).ends_with("128 129 130 "));
}

TEST_F(ItemReader, refusesMoreItemsThanItAskedFor) {
  script->expect(readRequest({18}), listHeader(2) + record(18) + record(19));
  EXPECT_THROW(read({18}), ProtocolError);
}

TEST_F(ItemReader, refusesBytesAfterTheLastItem) {
  script->expect(readRequest({18}), listHeader(1) + record(18) + hex("00"));
  EXPECT_THROW(read({18}), ProtocolError);
}

TEST_F(ItemReader, refusesAListThatIsCutShort) {
  const auto whole = listHeader(1) + record(18);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    script->expect(readRequest({18}),
                   Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_THROW(read({18}), ProtocolError) << "of " << size << " bytes";
  }
}

}  // namespace
