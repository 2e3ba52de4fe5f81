// How calls of functions stand in the log: one test for each rule of what arguments and results look like.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "tests/emulator/calls_monitor_fixture.h"

namespace emulator {
namespace {

using testing::answering;
using ::testing::ElementsAre;

const HANDLE kHandle = reinterpret_cast<HANDLE>(std::uintptr_t{8});
const HANDLE kOtherHandle = reinterpret_cast<HANDLE>(std::uintptr_t{12});

class CallLogTest : public testing::MonitorTest {
 protected:
  template <typename T>
  void* address(T& object) {
    return &object;
  }
};

TEST_F(CallLogTest, writesTextsNumbersNullsAndHandles) {
  call<&::CreateFileW>(answering(kHandle), u"\\My Documents\\a.txt", GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "CreateFileW", "args": ["\\My Documents\\a.txt", 3221225472, 1, null, 4,)"
                  R"( 128, null], "result": "@HANDLE#1"})"));
}

TEST_F(CallLogTest, escapesWhatIsNotAscii) {
  const char16_t text[] = {u'"', u'\\', u'\n', u'é', 0xD83D, 0xDE00, 0xDC00, 0};  // the last is half a pair
  call<&::OutputDebugStringW>([](LPCWSTR) {}, text);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "OutputDebugStringW", "args": ["\"\\\u000a\u00e9\ud83d\ude00\udc00"],)"
                          R"( "result": null})"));
}

TEST_F(CallLogTest, writesNullForANullText) {
  call<&::FindWindowW>(answering(HWND{}), nullptr, u"title");
  EXPECT_THAT(log(), ElementsAre(R"({"call": "FindWindowW", "args": [null, "title"], "result": null})"));
}

TEST_F(CallLogTest, keepsTheNameOfAHandleAndTellsKindsApart) {
  const auto window = reinterpret_cast<HWND>(kHandle);
  call<&::FindNextFileW>(answering(TRUE), kOtherHandle, nullptr);
  call<&::FindNextFileW>(answering(TRUE), kHandle, nullptr);
  call<&::FindNextFileW>(answering(FALSE), kOtherHandle, nullptr);
  call<&::IsWindow>(answering(TRUE), window);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "FindNextFileW", "args": ["@HANDLE#1"], "result": 1})",
                                 R"({"call": "FindNextFileW", "args": ["@HANDLE#2"], "result": 1})",
                                 R"({"call": "FindNextFileW", "args": ["@HANDLE#1"], "result": 0})",
                                 R"({"call": "IsWindow", "args": ["@HWND#1"], "result": 1})"));
}

TEST_F(CallLogTest, givesAReusedHandleValueANewNameOnceItWasClosed) {
  call<&::CloseHandle>(answering(TRUE), kHandle);
  call<&::CloseHandle>(answering(TRUE), kHandle);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "CloseHandle", "args": ["@HANDLE#1"], "result": 1})",
                                 R"({"call": "CloseHandle", "args": ["@HANDLE#2"], "result": 1})"));
}

TEST_F(CallLogTest, namesThePredefinedHandles) {
  call<&::FindFirstFileW>(answering(INVALID_HANDLE_VALUE), u"\\*", nullptr);
  call<&::RegCloseKey>(answering(LONG{6}), HKEY_LOCAL_MACHINE);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "FindFirstFileW", "args": ["\\*"], "result": "@INVALID_HANDLE_VALUE"})",
                          R"({"call": "RegCloseKey", "args": ["@HKEY_LOCAL_MACHINE"], "result": 6})"));
}

TEST_F(CallLogTest, writesBuffersByTheirLengthAndLeavesOutWhatGoesOut) {
  const BYTE data[] = {1, 2, 3};
  BYTE room[64];
  DWORD moved = 99;
  call<&::WriteFile>(answering(TRUE), kHandle, data, 3u, &moved, nullptr);
  call<&::ReadFile>(answering(TRUE), kHandle, room, 64u, &moved, nullptr);
  call<&::WriteFile>(answering(FALSE), kHandle, nullptr, 0u, &moved, nullptr);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "WriteFile", "args": ["@HANDLE#1", {"bytes": 3}, 3, null], "result": 1})",
                  R"({"call": "ReadFile", "args": ["@HANDLE#1", 64, null], "result": 1})",
                  R"({"call": "WriteFile", "args": ["@HANDLE#1", null, 0, null], "result": 0})"));
}

TEST_F(CallLogTest, writesSignedNumbersSignedAndWhatGoesInAndOutAsItWentIn) {
  LONG high = -1;
  const auto seek = [](HANDLE, LONG, LONG* upper, DWORD) {
    *upper = 77;
    return DWORD{0xFFFFFFF0};
  };
  call<&::SetFilePointer>(seek, kHandle, -16, &high, FILE_END);
  call<&::SetFilePointer>(answering(DWORD{0}), kHandle, 5, nullptr, FILE_BEGIN);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "SetFilePointer", "args": ["@HANDLE#1", -16, -1, 2], "result": 4294967280})",
                  R"({"call": "SetFilePointer", "args": ["@HANDLE#1", 5, null, 0], "result": 0})"));
}

TEST_F(CallLogTest, writesHresultsUnsignedAndErrorNumbersAsTheyAre) {
  void* object = nullptr;
  call<&::CoCreateInstance>(answering(REGDB_E_CLASSNOTREG), CLSID_Application, nullptr, CLSCTX_INPROC_SERVER,
                            IPOutlookApp::kIid, &object);
  HKEY key = nullptr;
  call<&::RegOpenKeyExW>(answering(LONG{2}), HKEY_LOCAL_MACHINE, u"SOFTWARE", 0u, KEY_READ, &key);
  EXPECT_THAT(
      log(), ElementsAre(
                 R"({"call": "CoCreateInstance", "args": ["{05058F23-20BE-11D2-8F18-0000F87A4335}", null, 1,)"
                 R"( "{05058F22-20BE-11D2-8F18-0000F87A4335}"], "result": 2147746132})",
                 R"({"call": "RegOpenKeyExW", "args": ["@HKEY_LOCAL_MACHINE", "SOFTWARE", 0, 131097],)"
                 R"( "result": 2})"));
}

TEST_F(CallLogTest, writesNullForACallWithoutAResult) {
  call<&::Sleep>([](DWORD) {}, 100u);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "Sleep", "args": [100], "result": null})"));
}

TEST_F(CallLogTest, writesTimes) {
  const SYSTEMTIME time{2005, 3, 1, 14, 14, 35, 10, 250};
  // 1601-01-02T03:04:05.0000006 is one day, three hours, four minutes, five seconds and six ticks.
  constexpr DWORD kSeconds = 86400 + 3 * 3600 + 4 * 60 + 5;
  constexpr std::uint64_t kTicks = std::uint64_t{kSeconds} * 10'000'000 + 6;
  const FILETIME ticks{static_cast<DWORD>(kTicks), static_cast<DWORD>(kTicks >> 32)};
  const FILETIME invalid{0, 0x80000000};
  call<&::SystemTimeToFileTime>(answering(TRUE), &time, nullptr);
  call<&::CompareFileTime>(answering(LONG{-1}), &ticks, &invalid);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "SystemTimeToFileTime", "args": ["2005-03-14T14:35:10.250"], "result": 1})",
                  R"({"call": "CompareFileTime", "args": ["1601-01-02T03:04:05.0000006Z",)"
                  R"( 9223372036854775808], "result": -1})"));
}

TEST_F(CallLogTest, writesStructuresAsObjectsAndArraysAsArrays) {
  CEPROPVAL values[3] = {};
  WCHAR name[] = u"ab";
  values[0].propid = (DWORD{0x1001} << 16) | CEVT_UI4;
  values[0].val.ulVal = 0xFFFFFFFF;
  values[1].propid = (DWORD{0x1002} << 16) | CEVT_LPWSTR;
  values[1].val.lpwstr = name;
  values[2].propid = (DWORD{0x1003} << 16) | CEVT_LPWSTR;
  values[2].wFlags = CEDB_PROPDELETE;
  values[2].val.lpwstr = reinterpret_cast<LPWSTR>(std::uintptr_t{1});  // not to be looked at
  call<&::CeWriteRecordProps>(answering(CEOID{902}), kHandle, CEOID{0}, WORD{3}, values);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "CeWriteRecordProps", "args": ["@HANDLE#1", 0, 3,)"
                                 R"( [{"propid": 268501011, "wFlags": 0, "val": 4294967295},)"
                                 R"( {"propid": 268566559, "wFlags": 0, "val": "ab"},)"
                                 R"( {"propid": 268632095, "wFlags": 512, "val": null}]], "result": 902})"));
}

TEST_F(CallLogTest, writesOnlyTheElementsThatAStructureCounts) {
  CEGUID volume = kSystemVolume;
  CEDBASEINFOEX info{};
  info.wVersion = 1;
  info.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC;
  std::u16string(u"\\Log").copy(info.szDbaseName, CEDB_MAXDBASENAMELEN);
  info.wNumSortOrder = 1;
  info.rgSortSpecs[0].wVersion = 1;
  info.rgSortSpecs[0].wNumProps = 1;
  info.rgSortSpecs[0].rgPropID[0] = 0x12020003;
  info.rgSortSpecs[0].rgdwFlags[0] = CEDB_SORT_DESCENDING;
  call<&::CeCreateDatabaseEx2>(answering(CEOID{7}), &volume, &info);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "CeCreateDatabaseEx2", "args": [{"Data1": 0, "Data2": 0, "Data3": 0,)"
                          R"( "Data4": 0}, {"wVersion": 1, "wNumSortOrder": 1, "dwFlags": 5, "szDbaseName":)"
                          R"( "\\Log", "dwDbaseType": 0, "rgSortSpecs": [{"wVersion": 1, "wNumProps": 1,)"
                          R"( "wKeyFlags": 0, "rgPropID": [302120963], "rgdwFlags": [1]}]}], "result": 7})"));
}

TEST_F(CallLogTest, staysWithinAStructureWhateverItCounts) {
  CEGUID volume = kSystemVolume;
  CEDBASEINFOEX info{};
  std::fill(std::begin(info.szDbaseName), std::end(info.szDbaseName), u'n');
  info.dwDbaseType = 0xFFFFFFFF;
  info.wNumSortOrder = 0xFFFF;
  for (SORTORDERSPECEX& order : info.rgSortSpecs) order.wNumProps = 0xFFFF;
  call<&::CeCreateDatabaseEx2>(answering(CEOID{0}), &volume, &info);
  const std::string order = R"({"wVersion": 0, "wNumProps": 65535, "wKeyFlags": 0, "rgPropID": [0, 0, 0],)"
                            R"( "rgdwFlags": [0, 0, 0]})";
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "CeCreateDatabaseEx2", "args": [{"Data1": 0, "Data2": 0, "Data3": 0,)"
                          R"( "Data4": 0}, {"wVersion": 0, "wNumSortOrder": 65535, "dwFlags": 0,)"
                          R"( "szDbaseName": ")" +
                          std::string(32, 'n') + R"(", "dwDbaseType": 4294967295, "rgSortSpecs": [)" + order +
                          ", " + order + ", " + order + ", " + order + R"(]}], "result": 0})"));
}

TEST_F(CallLogTest, writesPropertyListsUnsigned) {
  CEPROPID ids[] = {0x001E0064, 0xFFFF0003};
  WORD count = 2;
  BYTE* buffer = nullptr;
  DWORD size = 0;
  call<&::CeReadRecordProps>(answering(CEOID{5}), kHandle, CEDB_ALLOWREALLOC, &count, ids, &buffer, &size);
  EXPECT_THAT(
      log(), ElementsAre(R"({"call": "CeReadRecordProps", "args": ["@HANDLE#1", 1, 2, [1966180, 4294901763],)"
                         R"( null, 0], "result": 5})"));
}

TEST_F(CallLogTest, writesASoughtValueAndAnyOtherSeekAsANumber) {
  CEPROPVAL value{};
  value.propid = 0x12010003;
  value.val.lVal = -17;
  DWORD index = 0;
  call<&::CeSeekDatabase>(answering(CEOID{0}), kHandle, CEDB_SEEK_VALUEFIRSTEQUAL,
                          reinterpret_cast<DWORD_PTR>(&value), &index);
  call<&::CeSeekDatabase>(answering(CEOID{0}), kHandle, CEDB_SEEK_BEGINNING, DWORD_PTR{3}, &index);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "CeSeekDatabase", "args": ["@HANDLE#1", 32, {"propid": 302055427,)"
                          R"( "wFlags": 0, "val": -17}], "result": 0})",
                          R"({"call": "CeSeekDatabase", "args": ["@HANDLE#1", 2, 3], "result": 0})"));
}

TEST_F(CallLogTest, writesACountedTextAsFarAsItGoes) {
  char bytes[8];
  call<&::WideCharToMultiByte>(answering(2), CP_ACP, 0u, u"abcd", 2, bytes, 8, nullptr, nullptr);
  call<&::WideCharToMultiByte>(answering(5), CP_ACP, 0u, u"abcd", -1, bytes, 8, "?", nullptr);
  EXPECT_THAT(
      log(),
      ElementsAre(R"({"call": "WideCharToMultiByte", "args": [0, 0, "ab", 2, 8, null], "result": 2})",
                  R"({"call": "WideCharToMultiByte", "args": [0, 0, "abcd", -1, 8, "?"], "result": 5})"));
}

TEST_F(CallLogTest, writesAWindowClassWithItsProcedure) {
  WNDCLASSW description{};
  description.lpfnWndProc = [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return 0; };
  description.lpszClassName = u"Class";
  call<&::RegisterClassW>(answering(ATOM{0xC001}), &description);
  EXPECT_THAT(log(),
              ElementsAre(R"({"call": "RegisterClassW", "args": [{"style": 0, "lpfnWndProc": "@procedure#1",)"
                          R"( "cbClsExtra": 0, "cbWndExtra": 0, "hInstance": null, "hIcon": null, "hCursor":)"
                          R"( null, "hbrBackground": null, "lpszMenuName": null, "lpszClassName": "Class"}],)"
                          R"( "result": 49153})"));
}

TEST_F(CallLogTest, putsACallThatIsMadeInsideAnotherAfterIt) {
  const auto window = reinterpret_cast<HWND>(kHandle);
  const auto procedure = [&](HWND, UINT, WPARAM, LPARAM) {
    call<&::GetTickCount>(answering(DWORD{5}));
    return LRESULT{-1};
  };
  call<&::SendMessageW>(procedure, window, WM_DESTROY, WPARAM{0}, LPARAM{-2});
  EXPECT_THAT(log(), ElementsAre(R"({"call": "SendMessageW", "args": ["@HWND#1", 2, 0, -2], "result": -1})",
                                 R"({"call": "GetTickCount", "args": [], "result": 5})"));
}

TEST_F(CallLogTest, completesTheLineOfACallThatTheDeviceCouldNotEnd) {
  const auto broken = [](DWORD) { throw std::runtime_error("device file lost"); };
  EXPECT_THROW(call<&::Sleep>(broken, 1u), std::runtime_error);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "Sleep", "args": [1], "result": null})"));
}

TEST(CallLog, overwritesItsFile) {
  const testing::TemporaryFile file;
  { std::ofstream(file.path()) << "old\n"; }
  { CallLog log(file.path()); }
  EXPECT_TRUE(file.lines().empty());
}

TEST(CallLog, refusesAFileThatCantBeWritten) {
  try {
    CallLog log("/no/such/folder/calls");
    FAIL();
  } catch (const CallLogError& error) {
    EXPECT_STREQ(error.what(),
                 "/no/such/folder/calls: the call log can't be written: No such file or directory");
  }
}

TEST(CallLog, tellsWhenTheDeviceIsFull) {
  CallLog log("/dev/full");
  CallLog::Line& line = log.begin("Sleep");
  line.endArguments();
  line.json().null();
  log.end(line);
  EXPECT_THROW(log.check(), CallLogError);
}

class FaultedFunctions : public testing::MonitorTest {
 protected:
  FaultedFunctions()
      : MonitorTest({"CreateFileW=5", "RegOpenKeyExW=161", "CoCreateInstance=0x80040154", "LocalFree=87",
                     "GetTempPathW=123", "sendto=10051", "Sleep=9", "WriteFile#2=112*1"}) {}

  /// The device that a faulted call must not reach.
  template <typename Result>
  static auto unreached(Result result) {
    return [result](auto&&...) {
      ADD_FAILURE() << "the call was made";
      return result;
    };
  }
};

TEST_F(FaultedFunctions, returnTheirFailureValueAndLeaveTheCodeAsLastError) {
  EXPECT_EQ(call<&::CreateFileW>(unreached(kHandle), u"a", 0u, 0u, nullptr, 0u, 0u, nullptr),
            INVALID_HANDLE_VALUE);
  EXPECT_EQ(lastError_, 5u);
  WCHAR path[4] = {u'?', 0};
  EXPECT_EQ(call<&::GetTempPathW>(unreached(DWORD{1}), 4u, path), 0u);
  EXPECT_EQ(lastError_, 123u);
  EXPECT_EQ(path[0], u'?');
  EXPECT_EQ(call<&platform_sockets::sendto>(unreached(1), SOCKET{1}, "x", 1, 0, nullptr, 0), SOCKET_ERROR);
  EXPECT_EQ(lastError_, 10051u);
  call<&::Sleep>([](DWORD) { FAIL(); }, 1u);
  EXPECT_EQ(lastError_, 9u);
}

TEST_F(FaultedFunctions, returnTheBlockThatWasNotFreed) {
  int block = 0;
  EXPECT_EQ(call<&::LocalFree>(unreached(HLOCAL{}), &block), &block);
  EXPECT_EQ(lastError_, 87u);
}

TEST_F(FaultedFunctions, returnTheCodeItselfWhereThePlatformDoes) {
  auto key = reinterpret_cast<HKEY>(std::uintptr_t{77});
  EXPECT_EQ(call<&::RegOpenKeyExW>(unreached(LONG{0}), HKEY_LOCAL_MACHINE, u"a", 0u, KEY_READ, &key), 161);
  EXPECT_EQ(key, nullptr);
  void* object = this;
  EXPECT_EQ(
      call<&::CoCreateInstance>(unreached(S_OK), CLSID_Application, nullptr, 1u, IPOutlookApp::kIid, &object),
      REGDB_E_CLASSNOTREG);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(lastError_, 0u);
}

TEST_F(FaultedFunctions, areMadeOutsideTheRule) {
  DWORD written = 7;
  const auto write = [&] { return call<&::WriteFile>(answering(TRUE), kHandle, "x", 1u, &written, nullptr); };
  EXPECT_EQ(write(), TRUE);
  EXPECT_EQ(write(), FALSE);
  EXPECT_EQ(lastError_, 112u);
  EXPECT_EQ(written, 7u);
  EXPECT_EQ(write(), TRUE);
}

TEST_F(FaultedFunctions, standInTheLog) {
  call<&::CreateFileW>(unreached(kHandle), u"a", 0u, 0u, nullptr, 0u, 0u, nullptr);
  EXPECT_THAT(log(), ElementsAre(R"({"call": "CreateFileW", "args": ["a", 0, 0, null, 0, 0, null],)"
                                 R"( "result": "@INVALID_HANDLE_VALUE"})"));
}

}  // namespace
}  // namespace emulator
