// Libraries, the agent's own module, and the version of the operating system.
#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "tests/emulator/device_test.h"

namespace emulator {
namespace {

std::intptr_t registerServer() {
  return 7;
}

class DeviceModules : public test::DeviceTest {
 protected:
  DeviceModules() {
    modules().provide(u"pimstore.dll", {{u"DllRegisterServer", reinterpret_cast<FARPROC>(registerServer)}});
    std::fill_n(name_, MAX_PATH, u'#');
  }

  Modules& modules() { return device().modules; }
  DWORD lastError() { return device().lastError.value(); }

  WCHAR name_[MAX_PATH];
};

TEST_F(DeviceModules, aLibraryIsFoundWhateverItsCaseFolderOrExtension) {
  const HMODULE module = modules().load(u"pimstore.dll");
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(modules().load(u"PIMSTORE.DLL"), module);
  EXPECT_EQ(modules().load(u"pimstore"), module);
  EXPECT_EQ(modules().load(u"\\Windows\\PimStore.dll"), module);
}

TEST_F(DeviceModules, aMissingLibraryIsNotLoaded) {
  EXPECT_EQ(modules().load(u"none.dll"), nullptr);
  EXPECT_EQ(lastError(), 126u);
  EXPECT_EQ(modules().load(u""), nullptr);
  EXPECT_EQ(lastError(), 126u);
}

TEST_F(DeviceModules, anEntryIsFoundByItsExactName) {
  const HMODULE module = modules().load(u"pimstore.dll");
  const FARPROC entry = modules().entry(module, u"DllRegisterServer");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(reinterpret_cast<decltype(&registerServer)>(entry)(), 7);
  EXPECT_EQ(modules().entry(module, u"dllregisterserver"), nullptr);
  EXPECT_EQ(lastError(), 127u);
}

TEST_F(DeviceModules, loadsAreCountedAndGivenBack) {
  const HMODULE module = modules().load(u"pimstore.dll");
  modules().load(u"pimstore.dll");
  EXPECT_EQ(modules().loadCount(), 2u);
  EXPECT_TRUE(modules().unload(module));
  EXPECT_NE(modules().entry(module, u"DllRegisterServer"), nullptr);
  EXPECT_TRUE(modules().unload(module));
  EXPECT_EQ(modules().loadCount(), 0u);
  EXPECT_FALSE(modules().unload(module));
  EXPECT_EQ(lastError(), 6u);
  EXPECT_EQ(modules().entry(module, u"DllRegisterServer"), nullptr);
  EXPECT_EQ(lastError(), 6u);
}

TEST_F(DeviceModules, theAgentLiesWhereItIsInstalled) {
  EXPECT_EQ(modules().fileName(Modules::agent(), name_, MAX_PATH), 23u);
  EXPECT_EQ(std::u16string(name_), u"\\Windows\\QORVAPIMGR.dll");
  device().configuration.setModulePath(u"\\Program Files\\Qorv\\042\\QORVAPIMGR.dll");
  EXPECT_EQ(modules().fileName(Modules::agent(), name_, MAX_PATH), 38u);
  EXPECT_EQ(std::u16string(name_), u"\\Program Files\\Qorv\\042\\QORVAPIMGR.dll");
}

TEST_F(DeviceModules, aLibraryLiesInWindows) {
  modules().fileName(modules().load(u"PIMSTORE"), name_, MAX_PATH);
  EXPECT_EQ(std::u16string(name_), u"\\Windows\\pimstore.dll");
}

TEST_F(DeviceModules, aFileNameIsCutToItsBuffer) {
  EXPECT_EQ(modules().fileName(Modules::agent(), name_, 5), 4u);
  EXPECT_EQ(std::u16string(name_), u"\\Win");
  EXPECT_EQ(name_[5], u'#');
  EXPECT_EQ(modules().fileName(Modules::agent(), name_, 0), 0u);
}

TEST_F(DeviceModules, aModuleThatIsNotLoadedHasNoFileName) {
  EXPECT_EQ(modules().fileName(nullptr, name_, MAX_PATH), 0u);
  EXPECT_EQ(lastError(), 6u);
  EXPECT_EQ(name_[0], u'#');
}

TEST(OsVersionText, isReadAndWritten) {
  EXPECT_EQ(parseOsVersion("3.0.11171"), (OsVersion{3, 0, 11171}));
  EXPECT_EQ(toText(OsVersion()), "4.20.14053");
  for (const char* text : {"", "4", "4.20", "4.20.", "4.20.1.2", "4.x.1", " 4.20.1", "4.20.1 ", "-4.20.1",
                           "4..1", "4.20.99999999999"}) {
    EXPECT_EQ(parseOsVersion(text), std::nullopt) << text;
  }
}

TEST(OsVersionInformation, isFilledWhenItsSizeIsRight) {
  OSVERSIONINFOW information;
  std::memset(&information, 0xCC, sizeof information);
  EXPECT_FALSE(describe(OsVersion(), &information));
  EXPECT_EQ(information.dwMajorVersion, 0xCCCCCCCC);
  information.dwOSVersionInfoSize = 276;
  EXPECT_TRUE(describe(OsVersion{5, 2, 19}, &information));
  EXPECT_EQ(information.dwOSVersionInfoSize, 276u);
  EXPECT_EQ(information.dwMajorVersion, 5u);
  EXPECT_EQ(information.dwMinorVersion, 2u);
  EXPECT_EQ(information.dwBuildNumber, 19u);
  EXPECT_EQ(information.dwPlatformId, 3u);
  EXPECT_EQ(information.szCSDVersion[0], u'\0');
}

}  // namespace
}  // namespace emulator
