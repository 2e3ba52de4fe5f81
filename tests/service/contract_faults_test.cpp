// Each platform call on the way of the contract commands fails once, at its first, second … call.

#include <gtest/gtest.h>

#include "tests/service/database_test.h"

namespace qorv {
namespace {

using namespace test;

struct FailingCall {
  const char* name;
  const char* error;
};

class ContractFaults : public DatabaseTest {
 protected:
  void arrange() {
    makeContracts({contract(u"home", 2, 4), contract(u"desk", 2, 7)});
    makeLog({change(0x21, 7, 2), change(0x22, 8, 1), change(0x23, 9, 3)});
    setCounter(9);
  }

  static std::vector<Bytes> requests() {
    std::vector<Bytes> all;
    for (const unsigned command : {10, 11, 12, 13, 12, 9, 8, 11}) {
      all.push_back(request(command, kAppointment));
      if (command != 13) all.back().text(u"desk");
    }
    return all;
  }

  /// A status pair, nothing at all for a contract that couldn't be deleted, or a list whose count is that of
  /// its entries.
  static bool isWellFormed(unsigned command, const Bytes& reply) {
    if (command == 13) return reply.size() == 7;
    if (command == 11) return reply.size() >= 7 && reply.size() == 7 + 5 * reply.dwordAt(2);
    return reply == hex("01 00") || reply == hex("00 01") || (command == 9 && reply.size() == 0);
  }
};

class FailingOnce : public ContractFaults, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingOnce, leavesNothingBehindAndTheSessionGoesOn) {
  observeCalls();
  const std::string name = GetParam().name;
  // As many times as the requests make the call, and once more, when nothing fails.
  std::size_t last = 0;
  arrange();
  session(requests());
  last = callNames(name).size() + 1;
  ASSERT_GT(last, 1u) << "the call isn't on the way";
  for (std::size_t n = 1; n <= last; ++n) {
    arrange();
    clearFaults();
    fault(name + "#" + std::to_string(n) + "=" + GetParam().error + "*1");
    const auto replies = session(requests());
    for (std::size_t i = 0; i < replies.size(); ++i) {
      EXPECT_TRUE(isWellFormed(requests()[i].vector()[0], replies[i]))
          << n << ": " << i << ": " << replies[i];
    }
    EXPECT_EQ(device().handles.count<emulator::KernelObject>(), 0u) << n;
    EXPECT_EQ(device().objectModel.memory().liveBlocks(), 0u) << n;
  }
}

// Giving back what was handed out is not here: a CloseHandle that does nothing leaves the handle open.
INSTANTIATE_TEST_SUITE_P(
    Calls, FailingOnce,
    testing::Values(FailingCall{"CeOpenDatabaseEx2", "8"}, FailingCall{"CeSeekDatabase", "87"},
                    FailingCall{"CeReadRecordProps", "1018"}, FailingCall{"CeWriteRecordProps", "112"},
                    FailingCall{"CeDeleteRecord", "5"}, FailingCall{"RegOpenKeyExW", "2"},
                    FailingCall{"RegQueryValueExW", "234"}, FailingCall{"RegSetValueExW", "5"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(ContractFaults, everyReadFailingForGoodIsAnswered) {
  arrange();
  for (const char* rule : {"CeReadRecordProps=8", "CeSeekDatabase=87"}) {
    clearFaults();
    fault(rule);
    const auto replies =
        session({request(10, kAppointment).text(u"desk"), request(11, kAppointment).text(u"desk")});
    EXPECT_EQ(replies, (std::vector<Bytes>{hex("00 01"), hex("01 00 00000000 00")})) << rule;
  }
}

}  // namespace
}  // namespace qorv
