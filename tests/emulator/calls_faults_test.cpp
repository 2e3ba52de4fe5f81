// The grammar of fault rules, and which calls they hold for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "emulator/calls/faults.h"

namespace emulator {
namespace {

using ::testing::HasSubstr;

std::string complaint(std::string_view rule) {
  try {
    parseFaultRule(rule);
  } catch (const FaultRuleError& error) {
    return error.what();
  }
  return {};
}

TEST(FaultRule, needsACallAndAResultOnly) {
  const FaultRule rule = parseFaultRule("IAppointment.Save=0x80040067");
  EXPECT_EQ(rule.call, "IAppointment.Save");
  EXPECT_EQ(rule.first, 1u);
  EXPECT_EQ(rule.result, 0x80040067u);
  EXPECT_EQ(rule.count, std::nullopt);
}

TEST(FaultRule, namesTheFirstCallAndHowMany) {
  const FaultRule rule = parseFaultRule("ReadFile#12=1117*3");
  EXPECT_EQ(rule.call, "ReadFile");
  EXPECT_EQ(rule.first, 12u);
  EXPECT_EQ(rule.result, 1117u);
  EXPECT_EQ(rule.count, 3u);
}

TEST(FaultRule, takesTheWholeRangeOfResults) {
  EXPECT_EQ(parseFaultRule("Sleep=0").result, 0u);
  EXPECT_EQ(parseFaultRule("Sleep=4294967295").result, 0xFFFFFFFFu);
  EXPECT_EQ(parseFaultRule("Sleep=0XfFfFfFfF").result, 0xFFFFFFFFu);
}

TEST(FaultRule, refusesWhatIsNoRuleAndSaysWhere) {
  EXPECT_THAT(complaint("ReadFile"), HasSubstr("'ReadFile': there is no '='"));
  EXPECT_THAT(complaint("=5"), HasSubstr("no call ''"));
  EXPECT_THAT(complaint("IAppointment.Sav=5"), HasSubstr("no call 'IAppointment.Sav'"));
  EXPECT_THAT(complaint(" ReadFile=5"), HasSubstr("no call ' ReadFile'"));
  EXPECT_THAT(complaint("ReadFile#0=5"), HasSubstr("first call '0'"));
  EXPECT_THAT(complaint("ReadFile#=5"), HasSubstr("first call ''"));
  EXPECT_THAT(complaint("ReadFile#-1=5"), HasSubstr("first call '-1'"));
  EXPECT_THAT(complaint("ReadFile="), HasSubstr("result ''"));
  EXPECT_THAT(complaint("ReadFile=0x"), HasSubstr("result '0x'"));
  EXPECT_THAT(complaint("ReadFile=-5"), HasSubstr("result '-5'"));
  EXPECT_THAT(complaint("ReadFile=0x100000000"), HasSubstr("result '0x100000000'"));
  EXPECT_THAT(complaint("ReadFile=4294967296"), HasSubstr("result '4294967296'"));
  EXPECT_THAT(complaint("ReadFile=5*0"), HasSubstr("count '0'"));
  EXPECT_THAT(complaint("ReadFile=5*"), HasSubstr("count ''"));
  EXPECT_THAT(complaint("ReadFile=5*2x"), HasSubstr("count '2x'"));
  EXPECT_THAT(complaint("ReadFile=5#2"), HasSubstr("result '5#2'"));
}

TEST(FaultRule, complaintIsOneLine) {
  EXPECT_EQ(complaint("x=1").find('\n'), std::string::npos);
}

std::vector<std::optional<std::uint32_t>> resultsOf(Faults& faults, std::string_view call, int calls) {
  std::vector<std::optional<std::uint32_t>> results;
  for (int i = 0; i < calls; ++i) results.push_back(faults.count(call));
  return results;
}

constexpr std::nullopt_t kMade = std::nullopt;
using Results = std::vector<std::optional<std::uint32_t>>;

TEST(Faults, holdFromTheFirstCallOnWithoutEnd) {
  Faults faults({parseFaultRule("ReadFile#3=7")});
  EXPECT_EQ(resultsOf(faults, "ReadFile", 5), (Results{kMade, kMade, 7u, 7u, 7u}));
}

TEST(Faults, endAfterTheirCount) {
  Faults faults({parseFaultRule("ReadFile#2=7*2")});
  EXPECT_EQ(resultsOf(faults, "ReadFile", 5), (Results{kMade, 7u, 7u, kMade, kMade}));
}

TEST(Faults, countOnlyCallsOfTheirName) {
  Faults faults({parseFaultRule("IAppointment.Save#2=7*1")});
  EXPECT_EQ(resultsOf(faults, "ITask.Save", 3), (Results{kMade, kMade, kMade}));
  EXPECT_EQ(resultsOf(faults, "IAppointment.Save", 3), (Results{kMade, 7u, kMade}));
}

TEST(Faults, severalForOneCallCountTheSameCallsAndTheFirstGivenDecides) {
  Faults faults(
      {parseFaultRule("ReadFile#2=7*1"), parseFaultRule("ReadFile#4=8*1"), parseFaultRule("ReadFile#2=9*2")});
  EXPECT_EQ(resultsOf(faults, "ReadFile", 5), (Results{kMade, 7u, 9u, 8u, kMade}));
}

}  // namespace
}  // namespace emulator
