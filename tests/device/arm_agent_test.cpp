// The device library itself: every processor, a heap that runs out, a system that lacks calls, bad files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "emulator/session/session_error.h"
#include "emulator/snapshot/snapshot.h"
#include "tests/device/every_request.h"
#include "tests/device/loaded_library.h"
#include "tests/support/agent_test.h"

namespace test {
namespace {

using emulator::arm::GuestAddress;
using emulator::arm::Model;

const std::filesystem::path kLibrary = QORV_DEVICE_LIBRARY;

/// Sessions of this program's own objects are what the library's are compared with.
class DeviceLibraryTest : public AgentTest {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kLibrary)) GTEST_SKIP() << kLibrary << " is not built";
    if (!canLookInside()) GTEST_SKIP() << "compares with this program's own objects";
  }
  LibraryOptions options() const {
    LibraryOptions options;
    options.device.hostClock = [this] { return hostNow_; };
    return options;
  }
};

struct Machine {
  const char* name;
  Model model;
  GuestAddress base;
  GuestAddress skew;
};

class EveryMachine : public DeviceLibraryTest, public testing::WithParamInterface<Machine> {};

TEST_P(EveryMachine, answersAsTheHostModuleDoes) {
  emulator::loadSnapshot(device(), kOneOfEach);
  const auto expected = session(everyRequest());
  LibraryOptions options = this->options();
  options.heapSkew = GetParam().skew;
  options.arm = {GetParam().base, {GetParam().model, GetParam().skew}};
  LoadedLibrary loaded(kLibrary, options);
  emulator::loadSnapshot(loaded.device, kOneOfEach);
  auto [result, replies] = loaded.serve(everyRequest());
  EXPECT_EQ(result, 0);
  ASSERT_EQ(replies.size(), expected.size() + 1);
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(replies[i], expected[i]) << i;
  EXPECT_GT(expected[2].size(), 20u) << "there was something to read";
}

INSTANTIATE_TEST_SUITE_P(Processors, EveryMachine,
                         testing::Values(Machine{"StrongArm", Model::StrongArm, 0x01A40000, 4},
                                         Machine{"StrongArmWhereItIsLinkedFor", Model::StrongArm, 0x10000000,
                                                 4},
                                         Machine{"StrongArmAligned", Model::StrongArm, 0x01A40000, 0},
                                         Machine{"XScale", Model::XScale, 0x0C3F0000, 4},
                                         Machine{"Arm920", Model::Arm920, 0x01A40000, 4},
                                         Machine{"Arm926", Model::Arm926, 0x7A000000, 4}),
                         [](const auto& each) { return std::string(each.param.name); });

/// The library's heap fails; the program that holds the library never hears of it.
class ShortOfMemory : public DeviceLibraryTest {
 protected:
  /// Lets `failures` allocations from the n-th on fail, for every n until a session needs fewer.
  void sweep(std::uint64_t failures) {
    LoadedLibrary loaded(kLibrary, options());
    emulator::loadSnapshot(loaded.device, kOneOfEach);
    loaded.device.commit();
    const auto requests = everyRequest();
    std::set<HRESULT> results;
    bool cutShort = false;
    std::uint64_t n = 1;
    for (bool reached = true; reached; ++n) {
      loaded.space.heap.failOwnAllocations(n, failures);
      const auto [result, replies] = loaded.serve(requests);
      reached = loaded.space.heap.failedOwnAllocations() != 0;
      loaded.space.heap.failOwnAllocations(0, 0);
      loaded.device.rollback();  // so that every session finds the same
      results.insert(result);
      cutShort = cutShort || (result == S_OK && replies.size() <= requests.size());
      ASSERT_TRUE(result == S_OK || result == E_FAIL) << n;
      if (!reached) {
        EXPECT_EQ(replies.size(), requests.size() + 1) << "a session that nothing fails in";
      }
    }
    EXPECT_GT(n, 100u) << "allocations of a session";
    EXPECT_EQ(results, (std::set<HRESULT>{S_OK, E_FAIL})) << "some fail before the first request";
    EXPECT_TRUE(cutShort) << "what is thrown in a request ends the session as the end command does";
    loaded.agent = nullptr;
    EXPECT_EQ(loaded.space.heap.ownBlocks(), 0u);
  }
};

TEST_F(ShortOfMemory, everySingleAllocationMayFail) {
  sweep(1);
}

TEST_F(ShortOfMemory, everyAllocationFromSomeOnMayFail) {
  sweep(~std::uint64_t{0});
}

TEST_F(ShortOfMemory, theLibraryLoadsOrIsRefused) {
  LoadedLibrary loaded(kLibrary, options());
  for (std::uint64_t n = 1; n <= 10; ++n) {
    loaded.agent = nullptr;
    loaded.space.heap.failOwnAllocations(n, 1);
    try {
      loaded.agent = loaded.load(kLibrary);
      loaded.space.heap.failOwnAllocations(0, 0);
      EXPECT_EQ(loaded.serve(everyRequest()).first, S_OK) << n;
    } catch (const emulator::SessionError& error) {
      EXPECT_THAT(error.what(), testing::EndsWith("it refuses to be attached"));
    }
  }
  loaded.agent = nullptr;
  EXPECT_EQ(loaded.space.heap.ownBlocks(), 0u);
}

TEST_F(DeviceLibraryTest, leavesNothingInItsHeapHoweverOftenItIsLoaded) {
  LoadedLibrary loaded(kLibrary, options());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(loaded.serve(everyRequest()).first, S_OK);
    loaded.agent = nullptr;
    EXPECT_EQ(loaded.space.heap.ownBlocks(), 0u);
    EXPECT_EQ(loaded.space.heap.liveTexts(), 0u);
    EXPECT_EQ(loaded.space.heap.liveBlocks(), 0u);
    loaded.agent = loaded.load(kLibrary);
  }
}

TEST_F(DeviceLibraryTest, doesWithoutTheCallsThatOlderSystemsLack) {
  const emulator::OsVersion version{3, 0, 11171};
  LibraryOptions options = this->options();
  options.device.osVersion = version;
  LoadedLibrary loaded(kLibrary, options);
  emulator::loadSnapshot(loaded.device, kOneOfEach);
  const auto [result, replies] = loaded.serve(everyRequest());
  EXPECT_EQ(result, 0);
  EXPECT_EQ(replies[3], hex("00 01")) << "no commit without a database";
  EXPECT_EQ(replies[5], hex("01 00 01000000")) << "items are counted as ever";

  // It is as if the system had the calls, and each said that it isn't implemented, which is 120.
  device().configuration.setOsVersion(version);
  emulator::loadSnapshot(device(), kOneOfEach);
  for (const char* rule : {"CeCreateDatabaseEx2=120", "CeOpenDatabaseEx2=120", "CeOidGetInfoEx2=120"})
    fault(rule);
  auto expected = session(everyRequest());
  expected.emplace_back();
  EXPECT_EQ(replies, expected);
}

}  // namespace
}  // namespace test
