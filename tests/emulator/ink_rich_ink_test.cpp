// The rich-ink library as a program on the device loads and drives it.
#include <algorithm>
#include <gtest/gtest.h>

#include "emulator/ink/note_file.h"
#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"
#include "platform/errors.h"
#include "platform/rich_ink.h"
#include "platform/system.h"
#include "tests/emulator/device_test.h"

namespace emulator {
namespace {

constexpr UINT kText = 0x11;
constexpr UINT kNote = 0x10802;
constexpr UINT kStreamIn = 0x449;
constexpr UINT kStreamOut = 0x44A;

struct Transfer {
  Bytes bytes;
  std::size_t done = 0;
};

DWORD give(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) {
  auto& from = *reinterpret_cast<Transfer*>(cookie);
  *moved = std::min(count, static_cast<LONG>(from.bytes.size() - from.done));
  std::copy_n(from.bytes.begin() + static_cast<std::ptrdiff_t>(from.done), *moved, buffer);
  from.done += static_cast<std::size_t>(*moved);
  return 0;
}

DWORD take(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) {
  auto& to = *reinterpret_cast<Transfer*>(cookie);
  to.bytes.insert(to.bytes.end(), buffer, buffer + count);
  *moved = count;
  return 0;
}

DWORD refuse(DWORD_PTR, BYTE*, LONG, LONG* moved) {
  *moved = 0;
  return ERROR_ACCESS_DENIED;
}

Bytes utf16(std::u16string_view text) {
  Bytes bytes;
  for (const char16_t c : text) bytes.insert(bytes.end(), {static_cast<BYTE>(c), static_cast<BYTE>(c >> 8)});
  return bytes;
}

class RichInkControl : public test::DeviceTest {
 protected:
  RichInkControl() { provideLibraries(device()); }
  ~RichInkControl() override {
    if (library_ != nullptr) FreeLibrary(library_);
  }

  void initialise() {
    library_ = LoadLibraryW(u"RichInk.dll");
    ASSERT_NE(library_, nullptr);
    const FARPROC entry = GetProcAddressW(library_, u"InitRichInkDLL");
    ASSERT_NE(entry, nullptr);
    reinterpret_cast<InitRichInkDLL_t>(entry)();
  }
  static HWND newWindow() {
    return CreateWindowExW(0, u"RichInk", nullptr, 0x800, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
  }
  static HWND windowWith(std::u16string_view text) {
    const HWND window = newWindow();
    EXPECT_EQ(streamIn(window, kText, utf16(text)), static_cast<LRESULT>(text.size()));
    return window;
  }

  static LRESULT send(HWND window, UINT message, UINT format, EDITSTREAM& stream) {
    return SendMessageW(window, message, format, reinterpret_cast<LPARAM>(&stream));
  }
  static LRESULT streamIn(HWND window, UINT format, Bytes bytes, DWORD error = ERROR_SUCCESS) {
    Transfer transfer{std::move(bytes)};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&transfer), 0, give};
    const LRESULT result = send(window, kStreamIn, format, stream);
    EXPECT_EQ(stream.dwError, error);
    return result;
  }
  static Bytes streamOut(HWND window, UINT format) {
    Transfer transfer;
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&transfer), 0, take};
    send(window, kStreamOut, format, stream);
    EXPECT_EQ(stream.dwError, ERROR_SUCCESS);
    return transfer.bytes;
  }
  static std::u16string textIn(HWND window) {
    const Bytes bytes = streamOut(window, kText);
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      text += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    }
    return text;
  }

 private:
  const CurrentDevice current_{device()};
  HMODULE library_ = nullptr;
};

TEST_F(RichInkControl, isAClassOnceTheLibraryIsInitialised) {
  EXPECT_EQ(newWindow(), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_CANNOT_FIND_WND_CLASS);
  initialise();
  EXPECT_NE(newWindow(), nullptr);
}

TEST_F(RichInkControl, isNoClassAnyMoreWhenTheLibraryIsGone) {
  const HMODULE first = LoadLibraryW(u"richink");
  initialise();
  const HWND window = windowWith(u"stays");
  FreeLibrary(first);
  EXPECT_NE(newWindow(), nullptr) << "it is loaded once more";
  FreeLibrary(first);
  EXPECT_EQ(newWindow(), nullptr);
  EXPECT_EQ(textIn(window), u"stays");
  initialise();
  EXPECT_NE(newWindow(), nullptr);
}

TEST_F(RichInkControl, canBeInitialisedTwice) {
  initialise();
  SetLastError(7);
  reinterpret_cast<InitRichInkDLL_t>(GetProcAddressW(LoadLibraryW(u"RichInk"), u"InitRichInkDLL"))();
  EXPECT_EQ(GetLastError(), 7u);
  FreeLibrary(LoadLibraryW(u"RichInk"));
  FreeLibrary(LoadLibraryW(u"RichInk"));
}

TEST_F(RichInkControl, keepsATextAsItIs) {
  initialise();
  const std::u16string text = u"one\r\ntwo\nthree\r\u00FC\U0001F600\xD800";
  EXPECT_EQ(textIn(windowWith(text)), text);
}

TEST_F(RichInkControl, endsATextAtItsTerminator) {
  initialise();
  const HWND window = newWindow();
  EXPECT_EQ(streamIn(window, kText, utf16(std::u16string_view(u"ab\0cd", 5))), 2);
  EXPECT_EQ(textIn(window), u"ab");
  EXPECT_EQ(streamIn(window, kText, {0x78, 0x00, 0x79}), 1);
  EXPECT_EQ(textIn(window), u"x") << "half a character is none";
}

TEST_F(RichInkControl, savesAndLoadsNotes) {
  initialise();
  EXPECT_EQ(streamOut(windowWith(u"Milk\r\nBread"), kNote), encodeNoteFile(u"Milk\r\nBread"));
  const HWND window = newWindow();
  EXPECT_EQ(streamIn(window, kNote, encodeNoteFile(u"Eggs")), 4);
  EXPECT_EQ(textIn(window), u"Eggs");
  EXPECT_EQ(streamOut(newWindow(), kNote), encodeNoteFile(u""));
}

TEST_F(RichInkControl, cutsLongTextsUpDifferentlyEachTime) {
  initialise();
  std::u16string text;
  for (char16_t c = 1; c < 40'000; ++c) text += c;
  const HWND window = windowWith(text);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(textIn(window), text) << i;
}

TEST_F(RichInkControl, refusesAFileThatIsNoNoteAndKeepsItsText) {
  initialise();
  const HWND window = windowWith(u"before");
  EXPECT_EQ(streamIn(window, kNote, {'{', '\\', 'p', 'w', 'i'}, ERROR_INVALID_DATA), 0);
  EXPECT_EQ(streamIn(window, kNote, {}, ERROR_INVALID_DATA), 0);
  EXPECT_EQ(textIn(window), u"before");
}

TEST_F(RichInkControl, tellsTheProgramsOwnErrorAndKeepsItsText) {
  initialise();
  const HWND window = windowWith(u"before");
  for (const UINT message : {kStreamIn, kStreamOut}) {
    EDITSTREAM stream{1, 0, refuse};
    EXPECT_EQ(send(window, message, kText, stream), 0);
    EXPECT_EQ(stream.dwError, ERROR_ACCESS_DENIED);
  }
  EXPECT_EQ(textIn(window), u"before");
}

TEST_F(RichInkControl, knowsTwoFormats) {
  initialise();
  const HWND window = windowWith(u"before");
  for (const UINT format : {0u, SF_TEXT, SF_RTF, 0x802u}) {
    EDITSTREAM stream{1, 0, refuse};
    EXPECT_EQ(send(window, kStreamOut, format, stream), 0);
    EXPECT_EQ(stream.dwError, ERROR_INVALID_PARAMETER) << format;
  }
}

TEST_F(RichInkControl, windowsHaveTextsOfTheirOwn) {
  initialise();
  const HWND one = windowWith(u"one");
  const HWND two = windowWith(u"two");
  EXPECT_TRUE(DestroyWindow(one));
  EXPECT_FALSE(DestroyWindow(one));
  EXPECT_EQ(textIn(two), u"two");
  EXPECT_EQ(textIn(newWindow()), u"");
}

class RichInkByVersion : public RichInkControl {
 protected:
  bool isThere(const OsVersion& version) {
    device().configuration.setOsVersion(version);
    device().commit();
    Device other(path_, {.messages = messages_});
    provideLibraries(other);
    return other.modules.load(u"RichInk.dll") != nullptr;
  }
};

TEST_F(RichInkByVersion, cameWithPocketPc2002) {
  EXPECT_FALSE(isThere({3, 0, 11170}));
  EXPECT_FALSE(isThere({2, 12, 20000}));
  EXPECT_TRUE(isThere({3, 0, 11171}));
  EXPECT_TRUE(isThere({4, 20, 14053}));
}

}  // namespace
}  // namespace emulator
