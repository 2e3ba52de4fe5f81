#include "desktop/session.h"

#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "tests/desktop/scripted_stream.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

using SessionTest = ScriptedSession;

TEST_F(SessionTest, sendsLengthAndPayloadInOnePiece) {
  script->expect(hex("06 02"), hex("01 00 03 00 00 00"));
  EXPECT_EQ(session().request(Command::CountItems, ItemType::Appointment), hex("01 00 03 00 00 00"));
  EXPECT_EQ(script->writes, 1);
}

TEST_F(SessionTest, putsAReplyTogetherFromPiecesOfAnySize) {
  // 72, then "AB" with its NUL.
  const auto reply = hex("48 00 00 00  06 00 00 00  41 00 42 00 00 00");
  for (std::size_t piece = 1; piece <= reply.size() + 4; ++piece) {
    script->piece = piece;
    script->expect(hex("0E 02"), reply);
    EXPECT_EQ(readIdentity(session()), u"AB") << "in pieces of " << piece;
  }
}

TEST_F(SessionTest, readsTheEmptyIdentityOfADeviceWithoutOne) {
  script->expect(hex("0E 02"), hex("48 00 00 00  02 00 00 00  00 00"));
  EXPECT_EQ(readIdentity(session()), u"");
}

TEST_F(SessionTest, readsThePlatformLevel) {
  script->expect(hex("14 02"), hex("01 00 00 00"));
  EXPECT_TRUE(supportsNotes(session()));
  script->expect(hex("14 02"), hex("00 00 00 00"));
  EXPECT_FALSE(supportsNotes(session()));
}

TEST_F(SessionTest, refusesAnIdentityThatIsCutShort) {
  const auto whole = hex("48 00 00 00  06 00 00 00  41 00 42 00 00 00");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    script->expect(hex("0E 02"), Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_THROW(readIdentity(session()), ProtocolError) << "of " << size << " bytes";
  }
}

TEST_F(SessionTest, saysThatNobodyIsThereWhenTheStreamEndsBeforeAReply) {
  script->expectRaw(hex("14 02"), {});
  EXPECT_THROW(supportsNotes(session()), NoDevice);
  dropSession();
}

TEST_F(SessionTest, refusesAReplyThatTheStreamCutsShort) {
  for (const auto& stream : {hex("04"), hex("04 00 00"), hex("04 00 00 00"), hex("04 00 00 00 01 00 00")}) {
    script->expectRaw(hex("14 02"), stream);
    EXPECT_THROW(supportsNotes(session()), ProtocolError);
    dropSession();
  }
}

TEST_F(SessionTest, refusesAReplyLargerThanTheDevicesBuffer) {
  script->expectRaw(hex("14 02"), hex("01 60 03 00"));  // 0x36001
  EXPECT_THROW(supportsNotes(session()), ProtocolError);
  dropSession();
}

TEST_F(SessionTest, takesAReplyThatFillsTheDevicesBuffer) {
  script->expect(hex("0D 02"), Bytes(0x36000));
  EXPECT_EQ(session().request(Command::GetAllItems, ItemType::Appointment).size(), 0x36000u);
}

TEST_F(SessionTest, endsWithTheEndCommandAndWaitsForTheOtherSide) {
  script->expectEnd();
  session().end();
  EXPECT_TRUE(script->finished);
  dropSession();
}

TEST_F(SessionTest, endsByItselfWhenTheDeviceStillAnswers) {
  session();
  script->expectEnd();
  dropSession();
  EXPECT_TRUE(script->finished);
}

TEST_F(SessionTest, doesNotTalkToADeviceThatStoppedAnswering) {
  script->expectRaw(hex("14 02"), {});
  EXPECT_THROW(supportsNotes(session()), NoDevice);
  dropSession();
  EXPECT_EQ(script->writes, 1);
}

TEST_F(SessionTest, refusesAnEndThatSaysSomething) {
  script->expect(hex("01 02"), hex("00"));
  EXPECT_THROW(session().end(), ProtocolError);
  dropSession();
}

TEST(SessionWatcher, isToldOfEveryExchange) {
  const auto script = std::make_shared<Script>();
  script->expect(hex("06 03"), hex("01 00 03 00 00 00"));
  script->expectEnd();
  std::vector<Exchange> seen;
  Session session(std::make_unique<ScriptedStream>(script),
                  [&](const Exchange& exchange) { seen.push_back(exchange); });
  session.request(Command::CountItems, ItemType::Task);
  session.end();
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0].command, Command::CountItems);
  EXPECT_EQ(seen[0].type, ItemType::Task);
  EXPECT_EQ(seen[0].requestSize, 2u);
  EXPECT_EQ(seen[0].replySize, 6u);
  EXPECT_EQ(seen[1].command, Command::EndSession);
}

}  // namespace
