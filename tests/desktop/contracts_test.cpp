#include "desktop/contracts.h"

#include <gmock/gmock.h>

#include "desktop/device_error.h"
#include "tests/desktop/scripted_stream.h"

namespace {

using namespace desktop;
using namespace wire_bytes;
using testing::ElementsAre;
using testing::IsEmpty;

// Command, type 3 (tasks), and the name: four bytes of UTF-16.
const Bytes kFind = hex("0A 03 04 00 00 00 50 00 43 00");
const Bytes kChanges = hex("0B 03 04 00 00 00 50 00 43 00");
const Bytes kCommit = hex("0C 03 04 00 00 00 50 00 43 00");
const Bytes kForget = hex("09 03 04 00 00 00 50 00 43 00");

class Contracts : public ScriptedSession {
 protected:
  std::vector<Change> list() { return listChanges(session(), ItemType::Task, u"PC"); }

  template <typename Error, typename Act>
  std::string messageOf(Act act) {
    try {
      act();
    } catch (const Error& error) {
      return error.what();
    }
    return "no error";
  }
};

TEST_F(Contracts, areThereOrNot) {
  script->expect(kFind, hex("01 00"));
  EXPECT_TRUE(hasContract(session(), ItemType::Task, u"PC"));
  script->expect(kFind, hex("00 01"));
  EXPECT_FALSE(hasContract(session(), ItemType::Task, u"PC"));
}

TEST_F(Contracts, listChangesInTheDevicesOrder) {
  // Header: result 1, status 0, three entries, no fields.
  script->expect(kChanges, hex("01 00 03 00 00 00 00") + u32(20) + hex("03") + u32(18) + hex("01") + u32(19) +
                               hex("02"));
  EXPECT_THAT(list(), ElementsAre(Change{20, ChangeKind::Deleted}, Change{18, ChangeKind::Added},
                                  Change{19, ChangeKind::Changed}));
}

TEST_F(Contracts, mayHaveNoNews) {
  script->expect(kChanges, hex("01 00 00 00 00 00 00"));
  EXPECT_THAT(list(), IsEmpty());
}

TEST_F(Contracts, listKindsThatNobodyKnows) {
  script->expect(kChanges, hex("01 00 01 00 00 00 00") + u32(20) + hex("07"));
  EXPECT_EQ(spell(list().front().kind), "of kind 7");
}

TEST_F(Contracts, tellWhyTheDeviceListsNothing) {
  script->expect(kChanges, hex("00 01 00 00 00 00 00"));
  EXPECT_EQ(messageOf<DeviceRefusal>([&] { list(); }),
            "contract \"PC\": the device can't read up to which change it is");
  // A list that did not fit is not taken for the whole.
  script->expect(kChanges, hex("00 00 01 00 00 00 00") + u32(20) + hex("01"));
  EXPECT_EQ(messageOf<DeviceRefusal>([&] { list(); }),
            "contract \"PC\": there are more changes than the device can list");
}

TEST_F(Contracts, refuseListsThatAreNotWhatTheyClaim) {
  for (const Bytes& reply :
       {hex("01 00 02 00 00 00 00") + u32(20) + hex("01"), hex("01 00 01 00 00 00 00") + u32(20),
        hex("01 00 01 00 00 00 00") + u32(20) + hex("01 00"), hex("01 00 FF FF FF FF 00"), hex("01 00 00"),
        Bytes()}) {
    script->expect(kChanges, reply);
    EXPECT_THROW(list(), ProtocolError);
  }
}

TEST_F(Contracts, areCommitted) {
  script->expect(kCommit, hex("01 00"));
  EXPECT_NO_THROW(commitChanges(session(), ItemType::Task, u"PC"));
  script->expect(kCommit, hex("00 01"));
  EXPECT_EQ(messageOf<DeviceRefusal>([&] { commitChanges(session(), ItemType::Task, u"PC"); }),
            "contract \"PC\": the device can't commit it");
}

TEST_F(Contracts, areForgotten) {
  script->expect(kForget, hex("01 00"));
  EXPECT_NO_THROW(deleteContract(session(), ItemType::Task, u"PC"));
  script->expect(kForget, {});
  EXPECT_EQ(messageOf<DeviceRefusal>([&] { deleteContract(session(), ItemType::Task, u"PC"); }),
            "contract \"PC\": the device can't open its contracts");
}

TEST_F(Contracts, refuseAnswersOfAnotherSize) {
  for (const Bytes& reply : {hex("01"), hex("01 00 00"), Bytes()}) {
    script->expect(kFind, reply);
    EXPECT_THROW(hasContract(session(), ItemType::Task, u"PC"), ProtocolError);
    script->expect(kCommit, reply);
    EXPECT_THROW(commitChanges(session(), ItemType::Task, u"PC"), ProtocolError);
  }
  script->expect(kForget, hex("01"));
  EXPECT_THROW(deleteContract(session(), ItemType::Task, u"PC"), ProtocolError);
}

}  // namespace
