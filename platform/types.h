// The platform's basic types, right for the host and for the 32-bit ARM device alike.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

// Every platform call bears its own linker name, so that `socket`, `htons` and their like never take the
// place of the C library's, nor are taken for it. On the device the name is the import's thunk. The attribute
// lets a program that defines the call offer it to the modules that it loads.
#define CE_CALL(name) __asm__("ce_" #name) __attribute__((visibility("default")))

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using LONG = std::int32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using BOOL = int;
using HRESULT = std::int32_t;
using ATOM = std::uint16_t;

/// Words of the target's pointer width, for places where the platform passes a pointer in an integer.
using DWORD_PTR = std::uintptr_t;
using ULONG_PTR = std::uintptr_t;
using UINT_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
/// A text that its receiver frees with IPOutlookApp::SysFreeString. As an argument any NUL-terminated text
/// serves.
using BSTR = WCHAR*;

inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;

using VARIANT_BOOL = std::int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

using HANDLE = struct HANDLE__*;
using HMODULE = struct HMODULE__*;
using HINSTANCE = HMODULE;
using HWND = struct HWND__*;
using HMENU = struct HMENU__*;
using HICON = struct HICON__*;
using HCURSOR = HICON;
using HBRUSH = struct HBRUSH__*;
using HGDIOBJ = void*;
using HLOCAL = void*;
/// Cast to the entry's own type before it is called.
using FARPROC = void (*)();

/// What CreateFileW, FindFirstFileW and CeOpenDatabaseEx2 return when they fail.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~std::uintptr_t{0});

/// Whether a structure that holds pointers has its size on the device; on a target with wider pointers
/// nothing is said.
template <std::size_t kSize, std::size_t kDeviceSize>
inline constexpr bool kHasDeviceLayout = sizeof(void*) != 4 || kSize == kDeviceSize;

inline constexpr DWORD MAX_PATH = 260;

namespace platform_detail {
/// Two 32-bit words, low word first. The device passes 64-bit arguments in the next free registers, without
/// the even-register alignment that a plain 64-bit type would get from the compiler; a class of two words
/// does the same.
struct TwoWords {
  DWORD low = 0;
  DWORD high = 0;

  constexpr TwoWords() = default;
  constexpr explicit TwoWords(std::uint64_t value)
      : low(static_cast<DWORD>(value)), high(static_cast<DWORD>(value >> 32)) {}
  [[nodiscard]] constexpr std::uint64_t bits() const { return (std::uint64_t{high} << 32) | low; }
};
}  // namespace platform_detail

/// Days since 1899-12-30 with the time of day as fraction, in the device's local time.
class DATE {
 public:
  constexpr DATE() = default;
  constexpr DATE(double days) : words_(std::bit_cast<std::uint64_t>(days)) {}
  constexpr operator double() const { return std::bit_cast<double>(words_.bits()); }

 private:
  platform_detail::TwoWords words_;
};

class LARGE_INTEGER {
 public:
  constexpr LARGE_INTEGER() = default;
  constexpr LARGE_INTEGER(std::int64_t value) : words_(static_cast<std::uint64_t>(value)) {}
  constexpr operator std::int64_t() const { return static_cast<std::int64_t>(words_.bits()); }

 private:
  platform_detail::TwoWords words_;
};

class ULARGE_INTEGER {
 public:
  constexpr ULARGE_INTEGER() = default;
  constexpr ULARGE_INTEGER(std::uint64_t value) : words_(value) {}
  constexpr operator std::uint64_t() const { return words_.bits(); }

 private:
  platform_detail::TwoWords words_;
};

static_assert(sizeof(DATE) == 8 && std::is_trivially_copyable_v<DATE>);
static_assert(sizeof(LARGE_INTEGER) == 8 && std::is_trivially_copyable_v<LARGE_INTEGER>);
static_assert(sizeof(ULARGE_INTEGER) == 8 && std::is_trivially_copyable_v<ULARGE_INTEGER>);

struct GUID {
  DWORD Data1;
  WORD Data2;
  WORD Data3;
  BYTE Data4[8];

  friend constexpr bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
using LPCIID = const IID*;

static_assert(sizeof(GUID) == 16);

/// Local or universal calendar time, as the call that takes it says.
struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;      ///< 1 to 12
  WORD wDayOfWeek;  ///< Sunday is 0
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};
static_assert(sizeof(SYSTEMTIME) == 16);

/// 100-nanosecond units since 1601-01-01.
struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};
static_assert(sizeof(FILETIME) == 8);
