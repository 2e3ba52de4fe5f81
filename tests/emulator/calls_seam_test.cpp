// The platform's functions as a program on the device calls them.
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "emulator/pim/application_object.h"
#include "emulator/seam/call.h"
#include "emulator/seam/libraries.h"
#include "platform/appointment.h"
#include "tests/emulator/calls_monitor_fixture.h"

namespace emulator {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::TemporaryFile;

class SeamTest : public ::testing::Test {
 protected:
  static std::string newDevice() {
    const std::string path = ::testing::TempDir() + "qorv-seam-" + std::to_string(getpid()) + ".qdev";
    std::filesystem::remove(path);
    Device::create(path, {});
    return path;
  }
  SeamTest() { provideLibraries(device_); }
  ~SeamTest() override {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_ + suffix);
  }

  static IPOutlookApp* newApplication() {
    void* application = nullptr;
    EXPECT_EQ(
        CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER, IPOutlookApp::kIid, &application),
        S_OK);
    return static_cast<IPOutlookApp*>(application);
  }

  std::string path_ = newDevice();
  std::ostringstream messages_;
  Device device_{path_, {.messages = messages_}};
  CurrentDevice current_{device_};
};

TEST(SeamWithoutADevice, endsTheProgramAndSaysWhy) {
  EXPECT_DEATH(GetTickCount(), "no device is current");
}

TEST_F(SeamTest, makesTheInnermostDeviceCurrent) {
  SetLastError(5);
  {
    Device other(path_);
    const CurrentDevice inner(other);
    EXPECT_EQ(GetLastError(), 0u);
  }
  EXPECT_EQ(GetLastError(), 5u);
}

TEST_F(SeamTest, reachesFiles) {
  const HANDLE file =
      CreateFileW(u"\\Temp\\a", GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  DWORD moved = 99;
  EXPECT_TRUE(WriteFile(file, "abc", 3, &moved, nullptr));
  EXPECT_EQ(moved, 3u);
  EXPECT_EQ(SetFilePointer(file, 1, nullptr, FILE_BEGIN), 1u);
  char buffer[8] = "???????";
  EXPECT_TRUE(ReadFile(file, buffer, 8, &moved, nullptr));
  EXPECT_EQ(std::string_view(buffer, moved), "bc");
  EXPECT_TRUE(CloseHandle(file));
  EXPECT_FALSE(CloseHandle(file));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
  EXPECT_EQ(CreateFileW(nullptr, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_NAME);
}

TEST_F(SeamTest, reachesSearchesAndTemporaryFiles) {
  WCHAR name[MAX_PATH];
  EXPECT_NE(GetTempFileNameW(u"\\Temp", u"QRV", 0, name), 0u);
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(u"\\Temp\\QRV*", &found);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(FindNextFileW(search, &found));
  EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
  EXPECT_TRUE(FindClose(search));
  EXPECT_TRUE(DeleteFileW(name));
  EXPECT_EQ(GetFileAttributesW(name), 0xFFFFFFFF);
  WCHAR folder[MAX_PATH];
  EXPECT_EQ(GetTempPathW(MAX_PATH, folder), 6u);
}

TEST_F(SeamTest, reachesTheRegistry) {
  ASSERT_TRUE(device_.registry.makeKey(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Test"));
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Test", 0, KEY_READ, &key), 0);
  const DWORD value = 7;
  EXPECT_EQ(RegSetValueExW(key, u"n", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value), 0);
  DWORD type = 99;
  DWORD read = 99;
  DWORD size = sizeof read;
  EXPECT_EQ(RegQueryValueExW(key, u"N", nullptr, &type, reinterpret_cast<BYTE*>(&read), &size), 0);
  EXPECT_EQ(type, REG_DWORD);
  EXPECT_EQ(read, 7u);
  EXPECT_EQ(RegCloseKey(key), 0);
  EXPECT_EQ(RegCloseKey(key), static_cast<LONG>(ERROR_INVALID_HANDLE));
}

TEST_F(SeamTest, givesAndTakesBackMemory) {
  auto* const block = static_cast<BYTE*>(LocalAlloc(LPTR, 100));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::count(block, block + 100, 0), 100);
  EXPECT_EQ(device_.memory.liveBlocks(), 1u);
  EXPECT_EQ(LocalFree(block), nullptr);
  int mine = 0;
  EXPECT_EQ(LocalFree(&mine), &mine);
  EXPECT_EQ(LocalFree(nullptr), nullptr);

  void* const heapBlock = HeapAlloc(GetProcessHeap(), 0, 10);
  EXPECT_FALSE(HeapFree(nullptr, 0, heapBlock));
  EXPECT_TRUE(HeapFree(GetProcessHeap(), 0, heapBlock));
  EXPECT_EQ(device_.memory.liveBlocks(), 0u);
}

TEST_F(SeamTest, convertsTimes) {
  const SYSTEMTIME time{2005, 3, 0, 14, 14, 35, 10, 250};
  FILETIME ticks{};
  ASSERT_TRUE(SystemTimeToFileTime(&time, &ticks));
  SYSTEMTIME back{};
  ASSERT_TRUE(FileTimeToSystemTime(&ticks, &back));
  EXPECT_EQ(back.wMilliseconds, 250);
  EXPECT_EQ(back.wDayOfWeek, 1);  // the 14th of March 2005 was a Monday
  const FILETIME none{};
  EXPECT_EQ(CompareFileTime(&none, &ticks), -1);
  const SYSTEMTIME wrong{2005, 2, 0, 30, 0, 0, 0, 0};
  EXPECT_FALSE(SystemTimeToFileTime(&wrong, &ticks));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(SeamTest, tellsClockAndZone) {
  const DWORD before = GetTickCount();
  Sleep(5000);
  EXPECT_GE(GetTickCount() - before, 5000u);
  TIME_ZONE_INFORMATION zone;
  std::memset(&zone, 0xCC, sizeof zone);
  EXPECT_EQ(GetTimeZoneInformation(&zone), TIME_ZONE_ID_UNKNOWN);
  EXPECT_EQ(zone.Bias, 0);
}

TEST_F(SeamTest, tellsVersionAndModules) {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  EXPECT_TRUE(GetVersionExW(&version));
  EXPECT_EQ(version.dwBuildNumber, 14053u);
  version.dwOSVersionInfoSize = 1;
  EXPECT_FALSE(GetVersionExW(&version));
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  WCHAR name[MAX_PATH];
  EXPECT_EQ(GetModuleFileNameW(Modules::agent(), name, MAX_PATH), kDefaultModulePath.size());
}

TEST_F(SeamTest, hasTheObjectModelsLibrary) {
  const HMODULE library = LoadLibraryW(u"pimstore.dll");
  ASSERT_NE(library, nullptr);
  const FARPROC entry = GetProcAddressW(library, u"DllRegisterServer");
  ASSERT_NE(entry, nullptr);
  device_.objectModel.unregisterServer();
  void* application = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID_Application, nullptr, 1, IPOutlookApp::kIid, &application),
            REGDB_E_CLASSNOTREG);
  EXPECT_EQ(reinterpret_cast<HRESULT (*)()>(entry)(), S_OK);
  newApplication()->Release();
  EXPECT_TRUE(FreeLibrary(library));
  EXPECT_EQ(LoadLibraryW(u"none.dll"), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_MOD_NOT_FOUND);
}

TEST_F(SeamTest, initialisesCom) {
  EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
  EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
  EXPECT_EQ(CoInitializeEx(nullptr, 2), RPC_E_CHANGED_MODE);
  CoUninitialize();
  CoUninitialize();
  EXPECT_EQ(CoInitializeEx(nullptr, 2), S_OK);
}

TEST_F(SeamTest, makesNoObjectAsPartOfAnother) {
  IPOutlookApp* const outer = newApplication();
  void* object = this;
  EXPECT_LT(CoCreateInstance(CLSID_Application, outer, 1, IPOutlookApp::kIid, &object), 0);
  outer->Release();
}

TEST_F(SeamTest, convertsTextsToTheCodePage) {
  char bytes[8];
  std::memset(bytes, '?', sizeof bytes);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"aé€", -1, bytes, 8, nullptr, nullptr), 4);
  EXPECT_EQ(std::string_view(bytes, 5), std::string_view("a\xE9\x80\0?", 5));
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abcdef", 3, bytes, 8, nullptr, nullptr), 3);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abcdef", -1, nullptr, 0, nullptr, nullptr), 7);
  std::memset(bytes, '?', sizeof bytes);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abcdef", -1, bytes, 3, nullptr, nullptr), 0);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(std::string_view(bytes, 4), "abc?");  // what has room is there all the same
  EXPECT_EQ(WideCharToMultiByte(65001, 0, u"a", -1, bytes, 8, nullptr, nullptr), 0);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(SeamTest, comparesWithoutCase) {
  EXPECT_EQ(_wcsicmp(u"/C", u"/c"), 0);
  EXPECT_LT(_wcsicmp(u"ÄA", u"äb"), 0);
  EXPECT_GT(_wcsicmp(u"ab", u"A"), 0);
  EXPECT_EQ(_memicmp("aBc", "AbCx", 3), 0);
  EXPECT_LT(_memicmp("a[", "A_", 2), 0);
  EXPECT_EQ(_memicmp("a", "b", 0), 0);
}

struct Reading {
  std::u16string_view text;
  int base;
  LONG value;
  std::ptrdiff_t length;
};

TEST_F(SeamTest, readsNumbers) {
  for (const Reading& expected : std::initializer_list<Reading>{{u"042", 10, 42, 3},
                                                                {u" \t-12a", 10, -12, 5},
                                                                {u"+7", 10, 7, 2},
                                                                {u"abc", 10, 0, 0},
                                                                {u"  -", 10, 0, 0},
                                                                {u"", 10, 0, 0},
                                                                {u"2147483648", 10, 2147483647, 10},
                                                                {u"-2147483649", 10, -2147483647 - 1, 11},
                                                                {u"0x1Fg", 16, 31, 4},
                                                                {u"0x1F", 0, 31, 4},
                                                                {u"0xg", 0, 0, 1},
                                                                {u"017", 0, 15, 3},
                                                                {u"19", 0, 19, 2},
                                                                {u"18", 8, 1, 1},
                                                                {u"zz", 36, 1295, 2}}) {
    WCHAR* end = nullptr;
    EXPECT_EQ(wcstol(expected.text.data(), &end, expected.base), expected.value) << expected.value;
    EXPECT_EQ(end - expected.text.data(), expected.length) << expected.value;
  }
}

std::vector<UINT> received;

LRESULT keepMessage(HWND, UINT message, WPARAM, LPARAM) {
  received.push_back(message);
  GetTickCount();
  return 42;
}

TEST_F(SeamTest, sendsMessagesToTheProgramsOwnWindows) {
  received.clear();
  WNDCLASSW description{};
  description.lpszClassName = u"Test";
  description.lpfnWndProc = keepMessage;
  EXPECT_NE(RegisterClassW(&description), 0);
  const HWND window =
      CreateWindowExW(0, u"test", u"Title", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(FindWindowW(u"Test", nullptr), window);
  EXPECT_EQ(FindWindowW(nullptr, u"other"), nullptr);
  EXPECT_FALSE(ShowWindow(window, 1));
  EXPECT_TRUE(UpdateWindow(window));
  EXPECT_EQ(SendMessageW(window, WM_USER, 0, 0), 42);
  EXPECT_TRUE(DestroyWindow(window));
  EXPECT_FALSE(IsWindow(window));
  EXPECT_THAT(received, ElementsAre(WM_USER, WM_DESTROY));
  EXPECT_NE(GetStockObject(WHITE_BRUSH), nullptr);
  EXPECT_EQ(GetStockObject(20), nullptr);
}

TEST_F(SeamTest, reportsMessageBoxes) {
  EXPECT_EQ(MessageBoxW(nullptr, u"Save FAILED", u"INFO", MB_SETFOREGROUND), 1);
  EXPECT_EQ(messages_.str(), "message box \"INFO\": Save FAILED\n");
}

TEST_F(SeamTest, startsNoProgramThatTheDeviceLacks) {
  PROCESS_INFORMATION information;
  EXPECT_FALSE(CreateProcessW(u"\\Windows\\none.exe", nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              nullptr, &information));
  EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(SeamTest, sendsDatagramsFromTheDevice) {
  WSADATA data;
  ASSERT_EQ(WSAStartup(0x0101, &data), 0);
  EXPECT_EQ(platform_sockets::htons(0x1234), 0x3412);
  // 127.0.0.1 in network order is 7F 00 00 01 in memory.
  EXPECT_EQ(platform_sockets::inet_addr("127.0.0.1"), 0x0100007Fu);
  const SOCKET socket = platform_sockets::socket(2, 2, 17);
  const SOCKADDR_IN nobody{2, platform_sockets::htons(9), platform_sockets::inet_addr("127.0.0.1"), {}};
  EXPECT_EQ(platform_sockets::sendto(socket, "abc", 3, 0, &nobody, 16), 3);
  EXPECT_EQ(closesocket(socket), 0);
  EXPECT_EQ(WSACleanup(), 0);
}

TEST_F(SeamTest, passesDebuggerOutputOn) {
  OutputDebugStringW(u"first\nsecond\n");
  OutputDebugStringW(nullptr);
  EXPECT_EQ(messages_.str(), "debugger: first\\nsecond\ndebugger: \n");
}

TEST_F(SeamTest, turnsADeviceThatCantBeWrittenIntoAFailedCall) {
  const auto broken = [](Device&) -> bool { throw StoreError("device.qdev", "disk is full"); };
  EXPECT_FALSE(call<&::DeleteFileW>(broken, u"a"));
  EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
  const auto brokenKey = [](Device&) -> LONG { throw StoreError("device.qdev", "disk is full"); };
  EXPECT_EQ(call<&::RegCloseKey>(brokenKey, HKEY{}), static_cast<LONG>(ERROR_DISK_FULL));
  const auto noMemory = [](Device&) -> HANDLE { throw std::bad_alloc(); };
  EXPECT_EQ(call<&::FindFirstFileW>(noMemory, u"a", nullptr), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
}

TEST_F(SeamTest, handsOutTheObjectsThemselvesWhileNobodyObserves) {
  IPOutlookApp* const application = newApplication();
  EXPECT_NE(dynamic_cast<ApplicationObject*>(application), nullptr);
  application->Release();
}

class ObservedSeam : public SeamTest {
 protected:
  void observe(const std::vector<std::string>& rules = {}) {
    std::vector<FaultRule> parsed;
    for (const std::string& rule : rules) parsed.push_back(parseFaultRule(rule));
    monitor_.emplace(CallLog(file_.path()), Faults(std::move(parsed)),
                     [this](DWORD error) { device_.lastError.set(error); });
    observed_.emplace(device_, &*monitor_);
  }

  TemporaryFile file_;
  std::optional<CallMonitor> monitor_;
  std::optional<CurrentDevice> observed_;
};

TEST_F(ObservedSeam, followsTheObjectModelFromCallToCall) {
  observe({"IAppointment.Save=0x80040067*1"});
  IPOutlookApp* const application = newApplication();
  IDispatch* created = nullptr;
  ASSERT_EQ(application->CreateItem(olAppointmentItem, &created), S_OK);
  auto* const appointment = static_cast<IAppointment*>(created);
  EXPECT_EQ(appointment->put_Start(38425.5), S_OK);
  EXPECT_EQ(appointment->Save(), E_INVALIDREMINDERTIME);
  EXPECT_EQ(appointment->Save(), S_OK);
  IRecurrencePattern* pattern = nullptr;
  ASSERT_EQ(appointment->GetRecurrencePattern(&pattern), S_OK);
  EXPECT_EQ(pattern->put_Interval(2), S_OK);
  EXPECT_EQ(pattern->Release(), 0u);
  void* item = nullptr;
  ASSERT_EQ(appointment->QueryInterface(IItem::kIid, &item), S_OK);
  EXPECT_EQ(static_cast<IItem*>(item)->Save(), S_OK);
  static_cast<IItem*>(item)->Release();
  EXPECT_EQ(appointment->Release(), 0u);
  application->Release();
  EXPECT_EQ(device_.objectModel.liveObjects().total(), 0u);
  EXPECT_THAT(
      file_.lines(),
      ElementsAre(
          R"({"call": "CoCreateInstance", "args": ["{05058F23-20BE-11D2-8F18-0000F87A4335}", null, 1,)"
          R"( "{05058F22-20BE-11D2-8F18-0000F87A4335}"], "result": 0})",
          R"({"call": "IPOutlookApp.CreateItem", "args": [1], "result": 0})",
          R"({"call": "IAppointment.put_Start", "args": [38425.5], "result": 0})",
          R"({"call": "IAppointment.Save", "args": [], "result": 2147745895})",
          R"({"call": "IAppointment.Save", "args": [], "result": 0})",
          R"({"call": "IAppointment.GetRecurrencePattern", "args": [], "result": 0})",
          R"({"call": "IRecurrencePattern.put_Interval", "args": [2], "result": 0})",
          R"({"call": "IRecurrencePattern.Release", "args": [], "result": 0})",
          R"({"call": "IAppointment.QueryInterface", "args":)"
          R"( ["{FB8998D0-38F0-4D12-AC56-4EC8FCE9F3D5}"], "result": 0})",
          R"({"call": "IItem.Save", "args": [], "result": 0})",
          R"({"call": "IItem.Release", "args": [], "result": 1})",
          R"({"call": "IAppointment.Release", "args": [], "result": 0})",
          R"({"call": "IPOutlookApp.Release", "args": [], "result": 0})"));
}

TEST_F(ObservedSeam, logsWhatAWindowProcedureCalls) {
  WNDCLASSW description{};
  description.lpszClassName = u"Test";
  description.lpfnWndProc = keepMessage;
  RegisterClassW(&description);
  const HWND window = CreateWindowExW(0, u"Test", u"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  observe();
  SendMessageW(window, WM_USER, 0, 0);
  const auto lines = file_.lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], R"({"call": "SendMessageW", "args": ["@HWND#1", 1024, 0, 0], "result": 42})");
  EXPECT_THAT(lines[1], ::testing::StartsWith(R"({"call": "GetTickCount")"));
}

TEST_F(ObservedSeam, leavesTheCodeOfAFaultAsLastError) {
  observe({"DeleteFileW=32"});
  EXPECT_FALSE(DeleteFileW(u"\\Temp\\a"));
  EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
}

TEST_F(ObservedSeam, logsNothingThatTheDeviceDoesForItself) {
  observe();
  device_.files.createFile(u"\\Temp\\a", GENERIC_WRITE, 0, CREATE_NEW, 0);
  auto item = device_.objectModel.items().make(ObjectKind::Task);
  device_.objectModel.items().add(item);
  EXPECT_THAT(file_.lines(), IsEmpty());
}

}  // namespace
}  // namespace emulator
