// Windows, the programs that show them, and message boxes.
#include <gtest/gtest.h>
#include <vector>

#include "tests/emulator/device_test.h"

namespace emulator {
namespace {

class DeviceWindows : public test::DeviceTest {
 protected:
  Windows& windows() { return device().windows; }
  DWORD lastError() { return device().lastError.value(); }

  WindowProcedure recorder() {
    return [this](HWND, UINT message, WPARAM wParam, LPARAM) -> LRESULT {
      messages_seen_.push_back(message);
      return static_cast<LRESULT>(wParam) + 1;
    };
  }

  std::vector<UINT> messages_seen_;
};

TEST_F(DeviceWindows, aClassIsRegisteredOnce) {
  EXPECT_NE(windows().registerClass(u"Host", recorder()), 0);
  EXPECT_EQ(windows().registerClass(u"HOST", recorder()), 0);
  EXPECT_EQ(lastError(), 1410u);
  EXPECT_EQ(windows().registerClass(u"", recorder()), 0);
  EXPECT_EQ(lastError(), 87u);
}

TEST_F(DeviceWindows, aWindowNeedsAKnownClass) {
  EXPECT_EQ(windows().create(u"Unknown", u"title", 0, nullptr), nullptr);
  EXPECT_EQ(lastError(), 1407u);
}

TEST_F(DeviceWindows, aWindowIsFoundByClassAndTitleWhateverTheirCase) {
  windows().registerClass(u"Host", recorder());
  const HWND window = windows().create(u"host", u"Title", WS_DISABLED, nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(windows().get(window)->style, WS_DISABLED);
  EXPECT_EQ(windows().find(u"HOST", u"TITLE"), window);
  EXPECT_EQ(windows().find(std::nullopt, u"Title"), window);
  EXPECT_EQ(windows().find(u"Host", std::nullopt), window);
  EXPECT_EQ(windows().find(u"Host", u"Other"), nullptr);
  EXPECT_EQ(windows().find(u"Other", u"Title"), nullptr);
}

TEST_F(DeviceWindows, aWindowInAnotherIsNotFoundAndGoesWithIt) {
  windows().registerClass(u"Host", recorder());
  const HWND outer = windows().create(u"Host", u"outer", 0, nullptr);
  const HWND inner = windows().create(u"Host", u"inner", 0, outer);
  const HWND innermost = windows().create(u"Host", u"innermost", 0, inner);
  EXPECT_EQ(windows().find(u"Host", u"inner"), nullptr);
  EXPECT_TRUE(windows().destroy(outer));
  EXPECT_EQ(windows().get(inner), nullptr);
  EXPECT_EQ(windows().get(innermost), nullptr);
  EXPECT_EQ(windows().count(), 0u);
}

TEST_F(DeviceWindows, aMessageReachesTheProcedureOfTheClass) {
  windows().registerClass(u"Host", recorder());
  const HWND window = windows().create(u"Host", u"", 0, nullptr);
  EXPECT_EQ(windows().send(window, WM_USER + 73, 41, 0), 42);
  EXPECT_EQ(messages_seen_, std::vector<UINT>({WM_USER + 73}));
}

TEST_F(DeviceWindows, destroyingTellsTheProcedureFirst) {
  windows().registerClass(u"Host", recorder());
  const HWND window = windows().create(u"Host", u"", 0, nullptr);
  EXPECT_TRUE(windows().destroy(window));
  EXPECT_EQ(messages_seen_, std::vector<UINT>({WM_DESTROY}));
  EXPECT_EQ(windows().get(window), nullptr);
}

TEST_F(DeviceWindows, showTellsWhetherItWasVisible) {
  windows().registerClass(u"Host", recorder());
  const HWND window = windows().create(u"Host", u"", 0, nullptr);
  EXPECT_FALSE(windows().show(window, 5));
  EXPECT_TRUE(windows().get(window)->visible);
  EXPECT_TRUE(windows().show(window, 0));
  EXPECT_FALSE(windows().get(window)->visible);
  EXPECT_TRUE(windows().update(window));
}

TEST_F(DeviceWindows, everyCallRefusesAWindowThatIsGone) {
  windows().registerClass(u"Host", recorder());
  const HWND window = windows().create(u"Host", u"", 0, nullptr);
  windows().destroy(window);
  messages_seen_.clear();
  const auto failsWith1400 = [this](bool failed) {
    const DWORD error = lastError();
    device().lastError.set(0);
    return failed && error == 1400;
  };
  EXPECT_TRUE(failsWith1400(!windows().destroy(window)));
  EXPECT_TRUE(failsWith1400(!windows().show(window, 1)));
  EXPECT_TRUE(failsWith1400(!windows().update(window)));
  EXPECT_TRUE(failsWith1400(windows().send(window, WM_DESTROY, 0, 0) == 0));
  EXPECT_TRUE(messages_seen_.empty());
}

class DeviceProcesses : public DeviceWindows {
 protected:
  DeviceProcesses() { processes().install(kProgram, {u"HostClass", u"Host", 250, 400}); }

  Processes& processes() { return device().processes; }
  bool isShown() { return windows().find(u"HostClass", u"Host") != nullptr; }

  static constexpr std::u16string_view kProgram = u"\\Windows\\host.exe";
};

TEST_F(DeviceProcesses, aProgramShowsItsWindowAfterItsTime) {
  EXPECT_TRUE(processes().create(u"\\WINDOWS\\Host.exe", u"", nullptr));
  EXPECT_FALSE(isShown());
  device().clock.sleep(249);
  EXPECT_FALSE(isShown());
  device().clock.sleep(1);
  EXPECT_TRUE(isShown());
}

TEST_F(DeviceProcesses, aProgramToldToCloseGoesAfterItsTime) {
  processes().create(kProgram, u"", nullptr);
  device().clock.sleep(250);
  EXPECT_TRUE(processes().create(kProgram, u"/c", nullptr));
  EXPECT_TRUE(isShown());
  device().clock.sleep(400);
  EXPECT_FALSE(isShown());
}

TEST_F(DeviceProcesses, aProgramThatDoesNotRunHasNothingToClose) {
  EXPECT_TRUE(processes().create(kProgram, u"/C", nullptr));
  device().clock.sleep(1000);
  EXPECT_FALSE(isShown());
}

TEST_F(DeviceProcesses, aProgramEndsWhenItsWindowIsToldToGoAndCanStartAgain) {
  processes().create(kProgram, u"", nullptr);
  device().clock.sleep(250);
  windows().send(windows().find(u"HostClass", u"Host"), WM_DESTROY, 0, 0);
  EXPECT_FALSE(isShown());
  processes().create(kProgram, u"", nullptr);
  device().clock.sleep(250);
  EXPECT_TRUE(isShown());
}

TEST_F(DeviceProcesses, aRunningProgramShowsNoSecondWindow) {
  processes().create(kProgram, u"", nullptr);
  processes().create(kProgram, u"", nullptr);
  device().clock.sleep(250);
  EXPECT_EQ(windows().count(), 1u);
}

TEST_F(DeviceProcesses, whatWasStartedIsKept) {
  processes().create(kProgram, u"", nullptr);
  processes().create(kProgram, u"/C", nullptr);
  ASSERT_EQ(processes().launches().size(), 2u);
  EXPECT_EQ(processes().launches()[1].program, kProgram);
  EXPECT_EQ(processes().launches()[1].commandLine, u"/C");
}

TEST_F(DeviceProcesses, aProgramThatIsMissingDoesNotStart) {
  PROCESS_INFORMATION poison{INVALID_HANDLE_VALUE, INVALID_HANDLE_VALUE, 7, 7};
  EXPECT_FALSE(processes().create(u"\\Windows\\none.exe", u"", &poison));
  EXPECT_EQ(lastError(), 2u);
  EXPECT_EQ(poison.dwProcessId, 7u);
  EXPECT_FALSE(processes().create(u"\\Windows", u"", nullptr));
  EXPECT_TRUE(processes().launches().empty());
}

TEST_F(DeviceProcesses, aFileOfTheDeviceStartsAndShowsNothing) {
  const Oid folder = device().fileTree.locate(u"\\Windows").node->oid;
  device().fileTree.make(folder, u"tool.exe", FILE_ATTRIBUTE_NORMAL);
  EXPECT_TRUE(processes().create(u"\\windows\\tool.exe", u"", nullptr));
  device().clock.sleep(1000);
  EXPECT_EQ(windows().count(), 0u);
}

TEST_F(DeviceProcesses, itsTwoHandlesAreClosedByTheCaller) {
  PROCESS_INFORMATION information{};
  EXPECT_TRUE(processes().create(kProgram, u"", &information));
  EXPECT_NE(information.dwProcessId, 0u);
  EXPECT_NE(information.hProcess, information.hThread);
  EXPECT_TRUE(device().handles.close<ClosableObject>(information.hProcess));
  EXPECT_TRUE(device().handles.close<ClosableObject>(information.hThread));
  EXPECT_EQ(device().handles.count<KernelObject>(), 0u);
}

class DeviceMessageBoxes : public test::DeviceTest {};

TEST_F(DeviceMessageBoxes, areAnsweredAtOnceAndReportedOnOneLine) {
  EXPECT_EQ(device().messageBoxes.show(u"Save FAILED", u"INFO", MB_SETFOREGROUND), 1);
  EXPECT_EQ(device().messageBoxes.show(u"GetTempFileName\n failed", u"CCEMail2", MB_SETFOREGROUND), 1);
  EXPECT_EQ(messages_.str(),
            "message box \"INFO\": Save FAILED\n"
            "message box \"CCEMail2\": GetTempFileName\\n failed\n");
  ASSERT_EQ(device().messageBoxes.shown().size(), 2u);
  EXPECT_EQ(device().messageBoxes.shown()[1].text, u"GetTempFileName\n failed");
  EXPECT_EQ(device().messageBoxes.shown()[1].style, MB_SETFOREGROUND);
}

TEST_F(DeviceMessageBoxes, agreeWhateverTheirButtonsAre) {
  // OK 1, Retry 4, Yes 6, by style: OK, OK/Cancel, Abort/Retry/Ignore, Yes/No/Cancel, Yes/No, Retry/Cancel.
  constexpr int kExpected[] = {1, 1, 4, 6, 6, 4};
  for (UINT style = 0; style < std::size(kExpected); ++style) {
    EXPECT_EQ(device().messageBoxes.show(u"", u"", style), kExpected[style]) << style;
  }
}

}  // namespace
}  // namespace emulator
