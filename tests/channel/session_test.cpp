// Whole sessions through the export: log-on, loop, dispatcher, and requests that break the rules.

#include <gtest/gtest.h>

#include "channel/module_state.h"
#include "emulator/calls/call_monitor.h"
#include "emulator/seam/current_device.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

constexpr auto kOutlookKey = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Pim\\Outlook";

class Session : public AgentTest {
 protected:
  void setOutlookValue(BYTE value) {
    device().registry.put(kOutlookKey, {u"Outlook", REG_DWORD, {value, 0, 0, 0}});
  }
  std::vector<BYTE> outlookValue() { return device().registry.get(kOutlookKey, u"Outlook")->data; }
};

TEST_F(Session, endCommandGetsAnEmptyReplyOfTwoWritesAndReleasesTheStream) {
  ScriptedStream stream(hex("02000000 0102"));
  EXPECT_EQ(invoke(stream), 0);
  EXPECT_EQ(stream.writes(), (std::vector<Bytes>{hex("00000000"), Bytes()}));
  EXPECT_EQ(stream.references(), 0u);
}

TEST_F(Session, nothingIsReadAfterTheEndCommand) {
  ScriptedStream stream(hex("02000000 0101 02000000 1401"));
  EXPECT_EQ(invoke(stream), 0);
  EXPECT_EQ(stream.replies().size(), 1u);
}

TEST_F(Session, unknownCommandsGetAnEmptyReplyAndTheSessionGoesOn) {
  const auto replies = session({request(0, 1), request(21, 2), request(255, 5), request(20, 1)});
  EXPECT_EQ(replies, (std::vector<Bytes>{Bytes(), Bytes(), Bytes(), hex("01000000")}));
}

TEST_F(Session, everyPieceSizeGivesTheSameReplies) {
  const Bytes script = frame(request(20, 3)).append(frame(request(6, 2))).append(frame(request(1, 2)));
  for (const ULONG piece : {1u, 2u, 3u, 4u, 5u, 6u}) {
    ScriptedStream stream(script, piece);
    EXPECT_EQ(invoke(stream), 0);
    EXPECT_EQ(stream.replies(), (std::vector<Bytes>{hex("01000000"), hex("01 00 00000000"), Bytes()}))
        << piece;
  }
}

TEST_F(Session, requestsWithoutATypeOrWithAnUnknownOneGetAnEmptyReply) {
  const auto replies =
      session({Bytes(), hex("0E"), hex("0E 00"), hex("0E 06"), hex("0E FF"), request(20, 1)});
  EXPECT_EQ(replies, (std::vector<Bytes>{Bytes(), Bytes(), Bytes(), Bytes(), Bytes(), hex("01000000")}));
}

TEST_F(Session, anEmptyReplyIsNeverWrittenFromNowhere) {
  observeCalls();
  session({Bytes(), hex("0E 09"), request(0, 1)});
  for (const auto& call : calls("IRAPIStream.Write")) EXPECT_FALSE(call["args"][0].is_null()) << call;
}

TEST_F(Session, endCommandEndsAlsoWithoutAValidType) {
  for (const char* end : {"01000000 01", "02000000 0100", "02000000 0109"}) {
    ScriptedStream stream(hex(end).append(frame(request(20, 1))));
    EXPECT_EQ(invoke(stream), 0);
    EXPECT_EQ(stream.replies(), (std::vector<Bytes>{Bytes()})) << end;
  }
}

TEST_F(Session, requestThatTheStreamCutsShortIsNotExecuted) {
  // Delete all contacts, of which only the command arrives.
  ScriptedStream stream(hex("02000000 05"));
  EXPECT_EQ(invoke(stream), 0);
  EXPECT_TRUE(stream.writes().empty());
  EXPECT_EQ(stream.references(), 0u);
}

TEST_F(Session, endsWhenTheStreamFails) {
  observeCalls();
  fault("IRAPIStream.Read#3=0x80004005");
  ScriptedStream stream(frame(request(20, 1)).append(frame(request(20, 1))));
  EXPECT_EQ(invoke(stream), 0);
  EXPECT_EQ(stream.replies().size(), 1u);

  clearFaults();
  fault("IRAPIStream.Write#2=0x80004005");
  ScriptedStream other(frame(request(20, 1)).append(frame(request(20, 1))));
  EXPECT_EQ(invoke(other), 0);
  EXPECT_EQ(other.writes().size(), 1u);
}

TEST_F(Session, unwrittenReplyBytesAreZeroAfterALongerReply) {
  // A chunk of a file fills the buffer with 0xEE; the item reply's second ten bytes lie where it stood.
  const Bytes path = Bytes().text(u"\\Temp\\a.bin");
  Bytes append = request(18, 1).append(path).u32(0).u32(40);
  for (int i = 0; i < 40; ++i) append.u8(0xEE);
  const auto replies =
      session({append, request(19, 1).append(path).u32(0).u32(0).u32(40), request(3, 1).u32(99)});
  EXPECT_EQ(replies[1].size(), 50u);
  EXPECT_EQ(replies[2], hex("00 03 00000000 00000000 00000000000000000000"));
}

TEST_F(Session, outlookValueOfZeroBecomesOneAtTheLogOn) {
  setOutlookValue(0);
  session({});
  EXPECT_EQ(outlookValue(), (std::vector<BYTE>{1, 0, 0, 0}));
}

TEST_F(Session, anyOtherOutlookValueStays) {
  setOutlookValue(2);
  session({});
  EXPECT_EQ(outlookValue(), (std::vector<BYTE>{2, 0, 0, 0}));
}

TEST_F(Session, aMissingOutlookValueIsNotMade) {
  session({});
  EXPECT_FALSE(device().registry.get(kOutlookKey, u"Outlook"));
}

TEST_F(Session, logsOnAndOffInOrder) {
  observeCalls();
  session({});
  EXPECT_EQ(callNames(), (std::vector<std::string>{
                             "GetModuleFileNameW", "CoInitializeEx", "RegOpenKeyExW", "CoCreateInstance",
                             "IPOutlookApp.Logon", "IRAPIStream.Read", "IRAPIStream.Read",
                             "IRAPIStream.Write", "IRAPIStream.Write", "IRAPIStream.Release",
                             "IPOutlookApp.Logoff", "IPOutlookApp.Release", "CoFreeUnusedLibraries"}));
  EXPECT_EQ(calls("CoInitializeEx")[0]["args"], nlohmann::json::parse("[null, 0]"));
  EXPECT_EQ(calls("IPOutlookApp.Logon")[0]["args"], nlohmann::json::parse("[0]"));
}

TEST_F(Session, anUnregisteredObjectModelIsRegisteredAgain) {
  device().objectModel.unregisterServer();
  observeCalls();
  EXPECT_EQ(session({request(6, 2)}), (std::vector<Bytes>{hex("01 00 00000000")}));
  EXPECT_EQ(callNames("CoCreateInstance").size(), 2u);
  EXPECT_EQ(calls("LoadLibraryW")[0]["args"], nlohmann::json::parse(R"(["pimstore.dll"])"));
  EXPECT_EQ(callNames("DllRegisterServer").size(), 1u);
  EXPECT_EQ(callNames("FreeLibrary").size(), 1u);
}

TEST_F(Session, doesNotStartWhenTheObjectModelCannotBeMadeTwice) {
  observeCalls();
  fault("CoCreateInstance=0x80040154");
  ScriptedStream stream(frame(request(1, 1)));
  EXPECT_EQ(static_cast<DWORD>(invoke(stream)), 0x80004005u);
  EXPECT_EQ(callNames("CoCreateInstance").size(), 2u);
  EXPECT_TRUE(stream.readSizes().empty());
  EXPECT_EQ(stream.references(), 1u) << "the stream is not released";
}

struct LogOnFault {
  const char* rule;
  std::size_t creations;
};

class FailingLogOn : public Session, public testing::WithParamInterface<LogOnFault> {};

TEST_P(FailingLogOn, answersThatItCouldNotStart) {
  device().objectModel.unregisterServer();
  observeCalls();
  fault(GetParam().rule);
  ScriptedStream stream(frame(request(1, 1)));
  EXPECT_EQ(static_cast<DWORD>(invoke(stream)), 0x80004005u);
  EXPECT_EQ(callNames("CoCreateInstance").size(), GetParam().creations);
  EXPECT_EQ(stream.references(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Faults, FailingLogOn,
                         testing::Values(LogOnFault{"LoadLibraryW=126", 1},
                                         LogOnFault{"GetProcAddressW=127", 1},
                                         LogOnFault{"DllRegisterServer=0x80004005", 1},
                                         LogOnFault{"IPOutlookApp.Logon=0x80004005", 2}));

TEST_F(Session, nothingThatFailsOnTheWayToTheLogOnStopsIt) {
  setOutlookValue(0);
  for (const char* rule : {"CoInitializeEx=0x80010106", "RegOpenKeyExW=2", "RegQueryValueExW=2",
                           "RegSetValueExW=5", "GetModuleFileNameW=6"}) {
    clearFaults();
    fault(rule);
    EXPECT_EQ(session({request(20, 1)}), (std::vector<Bytes>{hex("01000000")})) << rule;
  }
}

TEST_F(Session, anApplicationWhoseLogOnFailedCountsAsLoggedOnAtTheNextInvocation) {
  emulator::CallMonitor monitor(
      std::nullopt, emulator::Faults({emulator::parseFaultRule("IPOutlookApp.Logon=0x80004005*1")}),
      [](DWORD) {});
  const emulator::CurrentDevice current(device(), &monitor);
  COutlook outlook;
  EXPECT_FALSE(outlook.logOn());
  IPOutlookApp* application = outlook.application();
  EXPECT_TRUE(outlook.logOn());
  EXPECT_EQ(outlook.application(), application) << "no second application is made";
}

TEST_F(Session, sessionsFollowEachOtherInOneModule) {
  if (!canLookInside()) GTEST_SKIP() << "looks into the module's state";
  EXPECT_EQ(session({request(6, 2)}).size(), 1u);
  EXPECT_EQ(session({request(6, 2)}).size(), 1u);
  EXPECT_EQ(moduleState().session, nullptr);
}

TEST(FullListingFlags, areOnePerType) {
  FullListingFlags flags;
  flags.set(DataType::Contact);
  EXPECT_TRUE(flags.isSet(DataType::Contact));
  EXPECT_FALSE(flags.isSet(DataType::Appointment));
  EXPECT_FALSE(flags.isSet(DataType::InkNote));
  flags.set(DataType::InkNote);
  flags.clear(DataType::Contact);
  EXPECT_FALSE(flags.isSet(DataType::Contact));
  EXPECT_TRUE(flags.isSet(DataType::InkNote));
}

TEST_F(Session, fullListingMarksItsTypeUntilChangesOrACommitAcrossSessions) {
  if (!canLookInside()) GTEST_SKIP() << "looks into the module's state";
  session({request(13, kAppointment)});
  EXPECT_TRUE(moduleState().fullListings.isSet(DataType::Appointment));
  EXPECT_FALSE(moduleState().fullListings.isSet(DataType::Task));
  session({request(6, kAppointment), request(11, kTask).text(u"desk")});
  EXPECT_TRUE(moduleState().fullListings.isSet(DataType::Appointment));
  session({request(11, kAppointment).text(u"desk")});
  EXPECT_FALSE(moduleState().fullListings.isSet(DataType::Appointment));
  session({request(13, kTask), request(12, kTask).text(u"desk")});
  EXPECT_FALSE(moduleState().fullListings.isSet(DataType::Task));
}

}  // namespace
}  // namespace qorv
