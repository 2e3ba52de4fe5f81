#include "platform/text.h"

#include <algorithm>
#include <cstring>

#include "emulator/pim/ansi_text.h"
#include "emulator/seam/call.h"
#include "emulator/seam/parse_integer.h"
#include "emulator/system/case_fold.h"

using emulator::call;
using emulator::Device;
using emulator::textOf;

namespace {

/// A negative count means that the text ends with its NUL, which belongs to it.
std::u16string_view countedText(LPCWSTR text, int count) {
  if (count >= 0) return {text, static_cast<std::size_t>(count)};
  return {text, std::u16string_view(text).size() + 1};
}

/// The bytes written or needed; what fits is written even when not everything does.
int toCodePage(Device& device, std::u16string_view text, char* bytes, int capacity) {
  const std::vector<std::uint8_t> converted = emulator::toAnsi(text);
  const auto size = static_cast<int>(converted.size());
  if (capacity == 0) return size;
  std::memcpy(bytes, converted.data(), static_cast<std::size_t>(std::min(size, capacity)));
  if (size <= capacity) return size;
  device.lastError.set(ERROR_INSUFFICIENT_BUFFER);
  return 0;
}

LONG sign(int order) {
  return (order > 0) - (order < 0);
}

int foldedByte(std::uint8_t byte) {
  return byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte;
}

int compareFolded(const std::uint8_t* left, const std::uint8_t* right, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (const int order = foldedByte(left[i]) - foldedByte(right[i])) return order;
  }
  return 0;
}

}  // namespace

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int count, char* bytes, int capacity,
                        const char* defaultChar, BOOL* usedDefaultChar) {
  return call<&::WideCharToMultiByte>(
      [&](Device& device) -> int {
        if (codePage == CP_ACP && text != nullptr && count != 0 && capacity >= 0) {
          return toCodePage(device, countedText(text, count), bytes, capacity);
        }
        device.lastError.set(ERROR_INVALID_PARAMETER);
        return 0;
      },
      codePage, flags, text, count, bytes, capacity, defaultChar, usedDefaultChar);
}

void OutputDebugStringW(LPCWSTR text) {
  call<&::OutputDebugStringW>([&](Device& device) { device.debugOutput.send(textOf(text)); }, text);
}

int _wcsicmp(LPCWSTR left, LPCWSTR right) {
  return call<&::_wcsicmp>(
      [&](Device&) {
        return sign(emulator::foldCase(textOf(left)).compare(emulator::foldCase(textOf(right))));
      },
      left, right);
}

int _memicmp(const void* left, const void* right, UINT count) {
  return call<&::_memicmp>(
      [&](Device&) {
        return sign(compareFolded(static_cast<const std::uint8_t*>(left),
                                  static_cast<const std::uint8_t*>(right), count));
      },
      left, right, count);
}

LONG wcstol(LPCWSTR text, WCHAR** end, int base) {
  return call<emulator::kWcstol>(
      [&](Device&) {
        const emulator::ParsedInteger parsed = emulator::parseInteger(textOf(text), base);
        if (end != nullptr) *end = const_cast<WCHAR*>(text) + parsed.length;
        return parsed.value;
      },
      text, end, base);
}
