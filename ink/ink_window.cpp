#include "ink/ink_window.h"

#include <algorithm>
#include <limits>

#include "ink/stream_callbacks.h"
#include "platform/files.h"
#include "service/unique_handle.h"

namespace qorv {

namespace {

/// Keeps the user's pen out, should the window ever be seen.
constexpr DWORD kReadOnly = 0x800;

BYTE* bytesOf(std::u16string& text) {
  return reinterpret_cast<BYTE*>(text.data());
}

}  // namespace

InkWindow::InkWindow()
    : window_(CreateWindowExW(0, u"RichInk", nullptr, kReadOnly, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr)) {}

InkWindow::~InkWindow() {
  if (window_) DestroyWindow(window_);
}

void InkWindow::transfer(UINT message, UINT format, void* cookie, EDITSTREAMCALLBACK callback) {
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(cookie), 0, callback};
  SendMessageW(window_, message, format, reinterpret_cast<LPARAM>(&stream));
}

void InkWindow::load(HANDLE file) {
  FileCookie cookie{.file = file};
  transfer(EM_STREAMIN, SF_PWI, &cookie, readFromFile);
}

std::u16string InkWindow::text() {
  MemoryCookie cookie;
  transfer(EM_STREAMOUT, SF_UTEXT, &cookie, writeToMemory);
  const auto size = static_cast<std::size_t>(cookie.count);
  // The bytes, the two of the terminator, and one more when they end within a character.
  std::u16string text(size / sizeof(WCHAR) + 2, u'\0');
  cookie.start = cookie.current = bytesOf(text);
  transfer(EM_STREAMOUT, SF_UTEXT, &cookie, writeToMemory);
  text.resize(size / sizeof(WCHAR));
  return text;
}

void InkWindow::setText(std::u16string text) {
  // The terminator goes along: the control ends the text there.
  const std::size_t size = (text.size() + 1) * sizeof(WCHAR);
  MemoryCookie cookie{.start = bytesOf(text), .current = bytesOf(text)};
  cookie.count = static_cast<LONG>(std::min<std::size_t>(size, std::numeric_limits<LONG>::max()));
  transfer(EM_STREAMIN, SF_UTEXT, &cookie, readFromMemory);
}

void InkWindow::save(const std::u16string& path) {
  const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  FileCookie cookie{.file = file.get()};
  transfer(EM_STREAMOUT, SF_PWI, &cookie, writeToFile);
}

}  // namespace qorv
