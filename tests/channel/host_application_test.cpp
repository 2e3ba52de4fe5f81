#include "channel/host_application.h"

#include <gtest/gtest.h>

#include "emulator/seam/current_device.h"
#include "tests/emulator/device_test.h"

namespace qorv {
namespace {

LRESULT answerNothing(HWND, UINT, WPARAM, LPARAM) {
  return 0;
}

class HostApplication : public emulator::test::DeviceTest {
 protected:
  HostApplication() { hostContext() = {}; }

  ATOM registerClass() {
    return registerHostWindowClass({u"QorvClass", u"Qorv"}, answerNothing, emulator::Modules::agent(),
                                   u"QorvHost");
  }

  emulator::CurrentDevice current_{device()};
};

TEST_F(HostApplication, registeringPreparesTheContextAndAppendsExe) {
  device().configuration.setModulePath(u"\\Qorv\\042\\QORVAPIMGR.dll");
  EXPECT_NE(registerClass(), 0);
  EXPECT_EQ(hostContext().applicationName, u"QorvHost.exe");
  EXPECT_EQ(hostContext().windowClassName, u"QorvClass_042");
  EXPECT_EQ(registerClass(), 0) << "the class is there already";
}

TEST_F(HostApplication, firstInstanceMakesAWindowAndTheNextDoesNot) {
  registerClass();
  EXPECT_TRUE(showSingleInstance(emulator::Modules::agent(), 1, u""));
  EXPECT_EQ(device().windows.count(), 1u);
  const auto* window = device().windows.get(FindWindowW(u"QorvClass", u"Qorv"));
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->style, WS_DISABLED);
  EXPECT_TRUE(window->visible);
  EXPECT_FALSE(showSingleInstance(emulator::Modules::agent(), 1, nullptr));
  EXPECT_EQ(device().windows.count(), 1u);
}

TEST_F(HostApplication, closeSwitchReachesTheWindowInEitherCase) {
  registerClass();
  int destroyed = 0;
  device().windows.add(
      {u"QorvClass", u"Qorv", 0, nullptr, [&](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
         if (message == WM_DESTROY) ++destroyed;
         return 0;
       }});
  for (const char16_t* commandLine : {u"/C", u"/c", u"-C", u"-c"}) {
    EXPECT_FALSE(showSingleInstance(emulator::Modules::agent(), 1, commandLine));
  }
  EXPECT_EQ(destroyed, 4);
  EXPECT_FALSE(showSingleInstance(emulator::Modules::agent(), 1, u"/CC"));
  EXPECT_EQ(destroyed, 4);
}

TEST_F(HostApplication, closeSwitchWithoutAWindowMakesNone) {
  registerClass();
  EXPECT_FALSE(showSingleInstance(emulator::Modules::agent(), 1, u"/C"));
  EXPECT_EQ(device().windows.count(), 0u);
}

TEST_F(HostApplication, withoutItsClassNoWindowIsMade) {
  prepareHostContext(emulator::Modules::agent(), u"QorvHost", {u"QorvClass", u"Qorv"});
  EXPECT_FALSE(showSingleInstance(emulator::Modules::agent(), 1, u""));
}

TEST_F(HostApplication, launchCutsItsCommandLineAt259Characters) {
  device().processes.install(u"QorvHost.exe", {u"QorvClass", u"Qorv"});
  EXPECT_TRUE(launchProgram(u"QorvHost.exe", std::u16string(300, u'x').c_str()));
  ASSERT_EQ(device().processes.launches().size(), 1u);
  EXPECT_EQ(device().processes.launches()[0].commandLine, std::u16string(259, u'x'));
  EXPECT_EQ(device().handles.count<emulator::KernelObject>(), 0u) << "the process's handles are closed";
  EXPECT_FALSE(launchProgram(u"None.exe", nullptr));
}

TEST_F(HostApplication, startWaitsForTheWindowPolledEvery100Milliseconds) {
  device().processes.install(u"QorvHost.exe", {u"QorvClass", u"Qorv", 950});
  const DWORD before = GetTickCount();
  EXPECT_TRUE(launchAndWaitForStart(u"QorvHost.exe", u"QorvClass", u"Qorv"));
  EXPECT_EQ(GetTickCount() - before, 1000u);
}

TEST_F(HostApplication, startGivesUpAfterTenSeconds) {
  device().processes.install(u"QorvHost.exe", {u"QorvClass", u"Qorv", 20000});
  const DWORD before = GetTickCount();
  EXPECT_FALSE(launchAndWaitForStart(u"QorvHost.exe", u"QorvClass", u"Qorv"));
  EXPECT_EQ(GetTickCount() - before, 10000u);
}

TEST_F(HostApplication, closeStartsTheProgramWithItsSwitchAndWaitsForTheWindowToGo) {
  device().processes.install(u"QorvHost.exe", {u"QorvClass", u"Qorv", 0, 300});
  ASSERT_TRUE(launchAndWaitForStart(u"QorvHost.exe", u"QorvClass", u"Qorv"));
  const DWORD before = GetTickCount();
  EXPECT_TRUE(launchAndWaitForClose(u"QorvHost.exe", u"QorvClass", u"Qorv"));
  EXPECT_EQ(device().processes.launches().back().commandLine, u"/C");
  EXPECT_EQ(GetTickCount() - before, 300u);
}

TEST_F(HostApplication, closeGivesUpOnAWindowThatStays) {
  device().processes.install(u"QorvHost.exe", {u"QorvClass", u"Qorv", 0, 20000});
  ASSERT_TRUE(launchAndWaitForStart(u"QorvHost.exe", u"QorvClass", u"Qorv"));
  EXPECT_FALSE(launchAndWaitForClose(u"QorvHost.exe", u"QorvClass", u"Qorv"));
}

}  // namespace
}  // namespace qorv
