#include "ink/stream_callbacks.h"

#include <algorithm>
#include <cstring>

#include "platform/files.h"
#include "platform/system.h"

namespace qorv {

namespace {

template <typename Cookie>
Cookie& cookieOf(DWORD_PTR word) {
  return *reinterpret_cast<Cookie*>(word);
}

DWORD failed(FileCookie& cookie) {
  return cookie.error = GetLastError();
}

/// How many of `count` bytes lie between the current position and the end.
std::size_t fitting(const MemoryCookie& cookie, LONG count) {
  const std::ptrdiff_t left = cookie.count - (cookie.current - cookie.start);
  return static_cast<std::size_t>(std::max<std::ptrdiff_t>(std::min<std::ptrdiff_t>(count, left), 0));
}

}  // namespace

DWORD readFromFile(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept {
  auto& from = cookieOf<FileCookie>(cookie);
  DWORD read = 0;
  if (!ReadFile(from.file, buffer, static_cast<DWORD>(count), &read, nullptr)) return failed(from);
  *moved = static_cast<LONG>(read);
  return 0;
}

DWORD writeToFile(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept {
  auto& to = cookieOf<FileCookie>(cookie);
  if (to.file == nullptr || to.file == INVALID_HANDLE_VALUE) {
    *moved = count;
    return 0;
  }
  DWORD written = 0;
  if (!WriteFile(to.file, buffer, static_cast<DWORD>(count), &written, nullptr)) return failed(to);
  *moved = static_cast<LONG>(written);
  return 0;
}

DWORD readFromMemory(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept {
  auto& from = cookieOf<MemoryCookie>(cookie);
  const std::size_t given = fitting(from, count);
  std::memcpy(buffer, from.current, given);
  from.current += given;
  *moved = static_cast<LONG>(given);
  return 0;
}

DWORD writeToMemory(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept {
  auto& to = cookieOf<MemoryCookie>(cookie);
  if (!to.start) {
    to.count += count;
    *moved = count;
    return 0;
  }
  const std::size_t taken = fitting(to, count);
  std::memcpy(to.current, buffer, taken);
  to.current += taken;
  if (to.current == to.start + to.count) std::memset(to.current, 0, sizeof(WCHAR));
  *moved = static_cast<LONG>(taken);
  return 0;
}

}  // namespace qorv
