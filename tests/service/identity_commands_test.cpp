#include <gtest/gtest.h>

#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

class IdentityCommands : public AgentTest {
 protected:
  void setMachineId(std::u16string_view path, std::u16string_view value, DWORD type = REG_SZ) {
    emulator::Bytes data;
    for (const WCHAR c : value) {
      data.push_back(static_cast<BYTE>(c));
      data.push_back(static_cast<BYTE>(c >> 8));
    }
    data.resize(data.size() + 2);
    device().registry.put(path, {u"MachineID", type, data});
  }
};

TEST_F(IdentityCommands, aDeviceWithoutAMachineIdAnswersAnEmptyText) {
  // 72, the count 2, one NUL.
  EXPECT_EQ(reply(request(14, kContact)), hex("48000000 02000000 0000"));
}

TEST_F(IdentityCommands, machineIdIsReadFromTheRegistryRoot) {
  setMachineId(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", u"unit-7");
  EXPECT_EQ(reply(request(14, kInkNote)), Bytes().u32(72).terminatedText(u"unit-7"));
}

TEST_F(IdentityCommands, aNumberedInstallationHasItsOwn) {
  device().configuration.setModulePath(u"\\Qorv\\042\\QORVAPIMGR.dll");
  setMachineId(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", u"other");
  setMachineId(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern\\042", u"mine");
  EXPECT_EQ(reply(request(14, kContact)), Bytes().u32(72).terminatedText(u"mine"));
}

TEST_F(IdentityCommands, machineIdOfMoreThan512BytesIsNone) {
  setMachineId(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", std::u16string(255, u'x'));
  EXPECT_EQ(reply(request(14, kContact)), Bytes().u32(72).terminatedText(std::u16string(255, u'x')));
  setMachineId(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", std::u16string(256, u'x'));
  EXPECT_EQ(reply(request(14, kContact)), hex("48000000 02000000 0000"));
}

class UnreadableMachineId : public IdentityCommands, public testing::WithParamInterface<const char*> {};

TEST_P(UnreadableMachineId, isAnEmptyText) {
  setMachineId(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", u"unit-7");
  // The log-on opens the first key.
  fault(GetParam());
  EXPECT_EQ(reply(request(14, kContact)), hex("48000000 02000000 0000"));
}

INSTANTIATE_TEST_SUITE_P(Calls, UnreadableMachineId,
                         testing::Values("RegOpenKeyExW=5", "RegQueryValueExW=234"));

struct Version {
  DWORD major;
  DWORD minor;
  DWORD build;
  DWORD level;
};

class PlatformLevel : public IdentityCommands, public testing::WithParamInterface<Version> {};

TEST_P(PlatformLevel, isOneFromThePlatformWithInkOn) {
  device().configuration.setOsVersion({GetParam().major, GetParam().minor, GetParam().build});
  EXPECT_EQ(reply(request(20, kTask)), Bytes().u32(GetParam().level));
}

INSTANTIATE_TEST_SUITE_P(Versions, PlatformLevel,
                         testing::Values(Version{3, 0, 11170, 0}, Version{3, 0, 11171, 1},
                                         Version{3, 0, 12000, 1}, Version{3, 1, 0, 0},
                                         Version{3, 1, 99999, 0}, Version{2, 12, 99999, 0},
                                         Version{4, 0, 0, 1}, Version{4, 20, 14053, 1}, Version{5, 2, 0, 1}));

TEST_F(IdentityCommands, platformLevelIsZeroWhenTheVersionCannotBeRead) {
  fault("GetVersionExW=87");
  EXPECT_EQ(reply(request(20, kTask)), hex("00000000"));
}

}  // namespace
}  // namespace qorv
