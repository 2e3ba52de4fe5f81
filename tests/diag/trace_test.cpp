#include "diag/trace.h"

#include "tests/emulator/datagram_receiver.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

class Trace : public AgentTest {
 protected:
  ~Trace() override {
    EXPECT_EQ(device().sockets.openCount(), 0u);
    EXPECT_EQ(device().sockets.startUps(), 0u);
  }

  /// Traces a message, and what the collector gets.
  template <typename... Arguments>
  std::string collected(LPCWSTR format, const Arguments&... arguments) {
    const emulator::test::DatagramReceiver collector(4321);
    perform([&] { trace(format, arguments...); });
    return collector.receive();
  }
  const std::vector<std::u16string>& debugged() { return device().debugOutput.sent(); }
};

/// A build may trace to another address than this machine's own.
class CollectedTrace : public Trace {
 protected:
  void SetUp() override {
    if (std::string_view(QORV_TRACE_COLLECTOR) != "127.0.0.1")
      GTEST_SKIP() << "traces go to " QORV_TRACE_COLLECTOR;
  }
};

TEST_F(CollectedTrace, isOneDatagramOfUtf16WithoutAnythingElse) {
  // Each character with its low byte first: U+00FC is FC 00, U+20AC is AC 20.
  EXPECT_EQ(collected(u"a\u00FC\u20AC"), std::string("a\0\xFC\0\xAC\x20", 6));
}

TEST_F(CollectedTrace, hasTwoBytesForEachCharacter) {
  EXPECT_EQ(collected(u"%s %d", u"count", 1234).size(), 20u);
}

TEST_F(CollectedTrace, canBeEmpty) {
  EXPECT_EQ(collected(u""), "");
  EXPECT_EQ(collected(nullptr), "");
}

TEST_F(CollectedTrace, isCutAt1024Characters) {
  const std::u16string message(2000, u'x');
  EXPECT_EQ(collected(message.c_str()).size(), 2048u);
}

TEST_F(Trace, goesToTheDebuggerToo) {
  perform([] { trace(u"%u items", DWORD{3}); });
  EXPECT_EQ(debugged(), std::vector<std::u16string>{u"3 items"});
}

TEST_F(Trace, opensAndClosesItsOwnSocket) {
  observeCalls();
  perform([] { trace(u"%s!", u"hi"); });
  EXPECT_EQ(callNames(), (std::vector<std::string>{"OutputDebugStringW", "WSAStartup", "htons", "inet_addr",
                                                   "socket", "sendto", "closesocket", "WSACleanup"}));
  EXPECT_EQ(calls("OutputDebugStringW")[0]["args"], nlohmann::json::array({"hi!"}));
  EXPECT_EQ(calls("WSAStartup")[0]["args"][0], 0x0101);
  EXPECT_EQ(calls("htons")[0]["args"][0], 4321);
  EXPECT_EQ(calls("inet_addr")[0]["args"][0], QORV_TRACE_COLLECTOR);
  EXPECT_EQ(calls("socket")[0]["args"], nlohmann::json::array({2, 2, 17}));
  const auto sent = calls("sendto")[0]["args"];
  EXPECT_EQ(sent[1], nlohmann::json::parse(R"({"bytes": 6})"));
  EXPECT_EQ(sent[2], 6);
  EXPECT_EQ(sent[3], 0);
  EXPECT_EQ(sent[5], 16);
}

TEST_F(Trace, ofNothingStillSends) {
  observeCalls();
  perform([] { trace(u""); });
  EXPECT_EQ(calls("sendto")[0]["args"][2], 0);
  EXPECT_EQ(callNames("WSA"), (std::vector<std::string>{"WSAStartup", "WSACleanup"}));
}

TEST_F(Trace, dropsTheErrorOfASocketThatIsNone) {
  observeCalls();
  fault("socket=10024");
  perform([] { trace(u"hi"); });
  EXPECT_EQ(callNames(), (std::vector<std::string>{"OutputDebugStringW", "WSAStartup", "htons", "inet_addr",
                                                   "socket", "GetLastError", "closesocket", "WSACleanup"}));
}

class FailingTrace : public Trace, public testing::WithParamInterface<const char*> {};

TEST_P(FailingTrace, endsAllTheSame) {
  fault(GetParam());
  perform([] { trace(u"hi"); });
  EXPECT_EQ(debugged().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingTrace,
                         testing::Values("WSAStartup=10091", "htons=1", "inet_addr=1", "socket=10024",
                                         "sendto=10050"));

TEST_F(Trace, leavesNothingElseUndoneWhenTheDebuggerIsNotThere) {
  observeCalls();
  fault("OutputDebugStringW=1");
  perform([] { trace(u"hi"); });
  EXPECT_EQ(calls("sendto")[0]["result"], 4);
}

}  // namespace
}  // namespace qorv
