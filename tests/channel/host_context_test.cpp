#include "channel/host_context.h"

#include <gtest/gtest.h>

#include "channel/registry_values.h"
#include "emulator/seam/current_device.h"
#include "tests/emulator/device_test.h"

namespace qorv {
namespace {

class HostContextTest : public emulator::test::DeviceTest {
 protected:
  const HostContext& prepare(const std::u16string& modulePath, const HostWindowNames& window = {}) {
    device().configuration.setModulePath(modulePath);
    hostContext() = {};
    EXPECT_TRUE(prepareHostContext(emulator::Modules::agent(), u"QorvApiMgrApp", window));
    return hostContext();
  }

  emulator::CurrentDevice current_{device()};
};

TEST_F(HostContextTest, anOrdinaryDirectoryGivesTheBareNames) {
  const HostContext& context = prepare(u"\\Windows\\QORVAPIMGR.dll");
  EXPECT_EQ(context.module, emulator::Modules::agent());
  EXPECT_EQ(context.applicationName, u"QorvApiMgrApp");
  EXPECT_EQ(context.databaseSuffix, u"");
  EXPECT_EQ(context.registrySuffix, u"");
  EXPECT_EQ(context.contractDatabase, u"\\QorvContracts");
  EXPECT_EQ(context.contactLog, u"\\QorvContactLog");
  EXPECT_EQ(context.appointmentLog, u"\\QorvAppointmentLog");
  EXPECT_EQ(context.taskLog, u"\\QorvTaskLog");
  EXPECT_EQ(context.mailLog, u"\\QorvMailLog");
  EXPECT_EQ(context.registryRoot, u"SOFTWARE\\Halvern");
}

TEST_F(HostContextTest, aNumberedDirectoryOfThreeCharactersMarksEveryName) {
  const HostContext& context =
      prepare(u"\\Program Files\\Qorv\\042\\QORVAPIMGR.dll", {u"QorvClass", u"Qorv"});
  EXPECT_EQ(context.databaseSuffix, u"_042");
  EXPECT_EQ(context.registrySuffix, u"\\042");
  EXPECT_EQ(context.contractDatabase, u"\\QorvContracts_042");
  EXPECT_EQ(context.contactLog, u"\\QorvContactLog_042");
  EXPECT_EQ(context.appointmentLog, u"\\QorvAppointmentLog_042");
  EXPECT_EQ(context.taskLog, u"\\QorvTaskLog_042");
  EXPECT_EQ(context.mailLog, u"\\QorvMailLog_042");
  EXPECT_EQ(context.registryRoot, u"SOFTWARE\\Halvern\\042");
  EXPECT_EQ(context.windowClassName, u"QorvClass_042");
  EXPECT_EQ(context.windowName, u"Qorv_042");
}

TEST_F(HostContextTest, preparingTwiceDoesNotMarkTwice) {
  const HostContext once = prepare(u"\\Qorv\\042\\QORVAPIMGR.dll", {u"QorvClass", u"Qorv"});
  prepareHostContext(emulator::Modules::agent(), u"QorvApiMgrApp", {u"QorvClass", u"Qorv"});
  EXPECT_EQ(hostContext(), once);
}

struct SuffixCase {
  const char16_t* modulePath;
  const char16_t* suffix;
};

class InstanceSuffix : public HostContextTest, public testing::WithParamInterface<SuffixCase> {};

TEST_P(InstanceSuffix, followsTheLastDirectory) {
  EXPECT_EQ(prepare(GetParam().modulePath).databaseSuffix, GetParam().suffix);
}

INSTANTIATE_TEST_SUITE_P(Directories, InstanceSuffix,
                         testing::Values(SuffixCase{u"\\Qorv\\000\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\Qorv\\001\\QORVAPIMGR.dll", u"_001"},
                                         SuffixCase{u"\\Qorv\\12a\\QORVAPIMGR.dll", u"_12a"},
                                         SuffixCase{u"\\Qorv\\-12\\QORVAPIMGR.dll", u"_-12"},
                                         SuffixCase{u"\\Qorv\\ 12\\QORVAPIMGR.dll", u"_ 12"},
                                         SuffixCase{u"\\Qorv\\- 2\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\Qorv\\0a1\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\Qorv\\a12\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\Qorv\\1234\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\Qorv\\12\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\042\\QORVAPIMGR.dll", u"_042"},
                                         SuffixCase{u"\\042\\bin\\QORVAPIMGR.dll", u""},
                                         SuffixCase{u"\\QORVAPIMGR.dll", u""}));

class RegistryValues : public emulator::test::DeviceTest {
 protected:
  emulator::CurrentDevice current_{device()};
};

TEST_F(RegistryValues, missingKeyReadsAsFailureAndNothing) {
  DWORD number = 7;
  std::u16string text = u"left over";
  EXPECT_FALSE(readRegistryDword(HKEY_LOCAL_MACHINE, u"SOFTWARE\\None", u"Value", number));
  EXPECT_EQ(number, 0u);
  EXPECT_FALSE(readRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\None", u"Value", 512, text));
  EXPECT_EQ(text, u"");
}

TEST_F(RegistryValues, writersMakeValuesButNoKeys) {
  EXPECT_FALSE(writeRegistryDword(HKEY_LOCAL_MACHINE, u"SOFTWARE\\None", u"Value", 1));
  EXPECT_FALSE(writeRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\None", u"Value", u"a"));
  device().registry.makeKey(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Some");
  EXPECT_TRUE(writeRegistryDword(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Number", 0x12345678));
  EXPECT_TRUE(writeRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Text", u"abc"));
  DWORD number = 0;
  std::u16string text;
  EXPECT_TRUE(readRegistryDword(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Number", number));
  EXPECT_EQ(number, 0x12345678u);
  EXPECT_TRUE(readRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Text", 512, text));
  EXPECT_EQ(text, u"abc");
}

TEST_F(RegistryValues, textThatDoesNotFitItsCapacityIsAFailure) {
  device().registry.makeKey(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Some");
  ASSERT_TRUE(writeRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Text", u"abc"));
  std::u16string text = u"left over";
  // Three characters and their NUL take 8 bytes.
  EXPECT_TRUE(readRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Text", 8, text));
  EXPECT_FALSE(readRegistryText(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Some", u"Text", 6, text));
  EXPECT_EQ(text, u"");
}

}  // namespace
}  // namespace qorv
