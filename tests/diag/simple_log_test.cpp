#include "diag/simple_log.h"

#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

class SimpleLog : public AgentTest {
 protected:
  /// The contents of a file of the device; "none" when it is not there.
  std::string contents(std::u16string_view path) {
    const auto place = device().fileTree.locate(path);
    if (!place.node) return "none";
    std::vector<BYTE> bytes(static_cast<std::size_t>(place.node->size));
    device().fileTree.read(place.node->oid, 0, bytes);
    return {bytes.begin(), bytes.end()};
  }
  std::string unnamed() { return contents(u"\\Temp\\qrvdbg.log"); }

  /// Has an unnamed log write these texts.
  void log(std::vector<LPCWSTR> texts) {
    perform([&] {
      CCESimpleLog written;
      for (const LPCWSTR text : texts) written.LogThis(text);
    });
  }
  void logNamed(std::u16string_view name, LPCWSTR text) {
    perform([&] { CCESimpleLog(name).LogThis(text); });
  }
  const std::vector<std::u16string>& debugged() { return device().debugOutput.sent(); }
};

const std::u16string kFailed = u"CCESimpleLog::LogThis FAILED!\n";

TEST_F(SimpleLog, aLineIsTheTextAndItsEnd) {
  log({u"first", u"second"});
  EXPECT_EQ(unnamed(), "first\r\nsecond\r\n");
}

TEST_F(SimpleLog, aLineIsInTheDevicesCodePage) {
  log({u"\u00FC\u20AC\u65E5"});
  // ü and the euro sign of code page 1252; what it does not have is a question mark.
  EXPECT_EQ(unnamed(), "\xFC\x80?\r\n");
}

TEST_F(SimpleLog, withoutANameBeginsAnewEveryTime) {
  log({u"before"});
  log({});
  EXPECT_EQ(unnamed(), "");
}

TEST_F(SimpleLog, twoWithoutANameShareOneFile) {
  perform([] {
    CCESimpleLog one;
    one.LogThis(u"one");
    // The first does not share its file for writing.
    CCESimpleLog two;
    two.LogThis(u"two");
  });
  EXPECT_EQ(unnamed(), "one\r\n");
  EXPECT_EQ(debugged(), std::vector<std::u16string>{kFailed});
}

TEST_F(SimpleLog, withANameAppends) {
  logNamed(u"agent", u"one");
  logNamed(u"agent", u"two");
  EXPECT_EQ(contents(u"\\temp\\agent.log"), "one\r\ntwo\r\n");
}

TEST_F(SimpleLog, twoOfOneNameWriteAtOnce) {
  perform([] {
    CCESimpleLog one(u"agent");
    CCESimpleLog two(u"agent");
    one.LogThis(u"one");
    // Its place was the end when it was opened.
    two.LogThis(u"TWO, longer");
  });
  EXPECT_EQ(contents(u"\\temp\\agent.log"), "TWO, longer\r\n");
}

TEST_F(SimpleLog, ofANameTwelveCharactersCount) {
  logNamed(u"abcdefghijklmnopqrst", u"x");
  EXPECT_EQ(contents(u"\\temp\\abcdefghijkl.log"), "x\r\n");
  logNamed(u"", u"x");
  EXPECT_EQ(contents(u"\\temp\\.log"), "x\r\n");
}

TEST_F(SimpleLog, opensItsFileAsItAlwaysHas) {
  observeCalls();
  logNamed(u"agent", u"x");
  const auto named = calls("CreateFileW")[0]["args"];
  // Read and write, shared for both, open always, write-through.
  EXPECT_EQ(named,
            nlohmann::json::parse(R"(["\\temp\\agent.log", 3221225472, 3, null, 4, 2147483648, null])"));
  EXPECT_EQ(callNames(), (std::vector<std::string>{"CreateFileW", "SetFilePointer", "WideCharToMultiByte",
                                                   "WriteFile", "CloseHandle"}));
  log({});
  // Write only, shared for reading, create always.
  EXPECT_EQ(calls("CreateFileW")[0]["args"],
            nlohmann::json::parse(R"(["\\temp\\qrvdbg.log", 1073741824, 1, null, 2, 2147483648, null])"));
  EXPECT_EQ(callNames(), (std::vector<std::string>{"CreateFileW", "CloseHandle"}));
}

TEST_F(SimpleLog, dropsNothingsAndTextsThatAreTooLong) {
  const std::u16string longest(512, u'x');
  const std::u16string tooLong(513, u'x');
  log({nullptr, u"", tooLong.c_str(), longest.c_str()});
  EXPECT_EQ(unnamed(), std::string(512, 'x') + "\r\n");
  EXPECT_TRUE(debugged().empty());
}

TEST_F(SimpleLog, saysWhenATextCannotBeConverted) {
  fault("WideCharToMultiByte=1113*1");
  log({u"first", u"second"});
  EXPECT_EQ(unnamed(), "Unable to convert unicode string for log.\r\nsecond\r\n");
}

TEST_F(SimpleLog, tellsTheDebuggerOfALineThatCannotBeWritten) {
  fault("WriteFile=112*1");
  log({u"first", u"second"});
  EXPECT_EQ(unnamed(), "second\r\n");
  EXPECT_EQ(debugged(), std::vector<std::u16string>{kFailed});
}

TEST_F(SimpleLog, keepsTheHandleOfAFileThatCannotBeOpened) {
  const auto folder = device().fileTree.locate(u"\\Temp").node->oid;
  device().fileTree.remove(folder);
  observeCalls();
  log({u"one", u"two"});
  EXPECT_EQ(callNames("WriteFile").size(), 2u);
  EXPECT_EQ(callNames("CloseHandle").size(), 1u);
  EXPECT_EQ(debugged(), (std::vector<std::u16string>{kFailed, kFailed}));
  EXPECT_FALSE(device().fileTree.locate(u"\\Temp").node) << "the folder is not made";
  logNamed(u"agent", u"three");
  EXPECT_EQ(callNames(), (std::vector<std::string>{"CreateFileW", "SetFilePointer", "WideCharToMultiByte",
                                                   "WriteFile", "OutputDebugStringW", "CloseHandle"}));
}

TEST_F(SimpleLog, goesOnWhenItsPlaceCannotBeSet) {
  logNamed(u"agent", u"one");
  fault("SetFilePointer=6");
  logNamed(u"agent", u"TWO");
  EXPECT_EQ(contents(u"\\temp\\agent.log"), "TWO\r\n");
}

TEST_F(SimpleLog, aFileThatCannotBeClosedIsNoMatter) {
  fault("CloseHandle=6*1");
  log({u"one"});
  EXPECT_EQ(unnamed(), "one\r\n");
  // The fault kept the device from closing it.
  EXPECT_EQ(device().handles.count<emulator::KernelObject>(), 1u);
  reopen();
}

}  // namespace
}  // namespace qorv
