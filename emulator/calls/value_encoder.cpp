#include "emulator/calls/value_encoder.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace emulator {

namespace {

template <typename... Numbers>
std::string formatted(const char* format, Numbers... numbers) {
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), format, numbers...);
  return {text.data(), static_cast<std::size_t>(length)};
}

constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr std::chrono::sys_days kFileTimeEpoch = std::chrono::year(1601) / 1 / 1;
constexpr std::uint64_t kLastFileTime =
    0x7FFF'FFFF'FFFF'FFFF;  // the platform's conversions refuse later ones

}  // namespace

void ValueEncoder::value(const SYSTEMTIME& time) {
  line_.text(formatted("%04u-%02u-%02uT%02u:%02u:%02u.%03u", time.wYear, time.wMonth, time.wDay, time.wHour,
                       time.wMinute, time.wSecond, time.wMilliseconds));
}

void ValueEncoder::value(const FILETIME& time) {
  const std::uint64_t ticks = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
  if (ticks > kLastFileTime) return line_.number(ticks);
  const std::chrono::seconds seconds(ticks / kTicksPerSecond);
  const auto days = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day date(kFileTimeEpoch + days);
  const std::chrono::hh_mm_ss clock(seconds - days);
  line_.text(formatted("%04d-%02u-%02uT%02d:%02d:%02d.%07uZ", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                       static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                       static_cast<int>(clock.seconds().count()),
                       static_cast<unsigned>(ticks % kTicksPerSecond)));
}

void ValueEncoder::value(const GUID& identifier) {
  const auto& rest = identifier.Data4;
  line_.text(formatted("{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", identifier.Data1,
                       identifier.Data2, identifier.Data3, rest[0], rest[1], rest[2], rest[3], rest[4],
                       rest[5], rest[6], rest[7]));
}

void ValueEncoder::bytes(const void* data, std::int64_t count) {
  if (data == nullptr) return line_.null();
  line_.beginObject();
  line_.key("bytes");
  line_.number(count);
  line_.endObject();
}

void ValueEncoder::text(const WCHAR* text, std::int64_t count) {
  if (text == nullptr) return line_.null();
  line_.text(count < 0 ? std::u16string_view(text)
                       : std::u16string_view(text, static_cast<std::size_t>(count)));
}

void ValueEncoder::text(const char* text) {
  text == nullptr ? line_.null() : line_.text(std::string_view(text));
}

void ValueEncoder::seekValue(DWORD type, DWORD_PTR value) {
  constexpr DWORD kByValue =
      CEDB_SEEK_VALUESMALLER | CEDB_SEEK_VALUEFIRSTEQUAL | CEDB_SEEK_VALUEGREATER | CEDB_SEEK_VALUENEXTEQUAL;
  if ((type & kByValue) == 0) return line_.number(std::uint64_t{value});
  this->value(reinterpret_cast<const CEPROPVAL*>(value));
}

void ValueEncoder::messageArgument(UINT message, LPARAM argument) {
  if (message != EM_STREAMIN && message != EM_STREAMOUT) return line_.number(std::int64_t{argument});
  value(reinterpret_cast<const EDITSTREAM*>(argument));
}

void ValueEncoder::key(const void* key) {
  if (key == reinterpret_cast<const void*>(HKEY_LOCAL_MACHINE)) {
    line_.text(std::string_view("@HKEY_LOCAL_MACHINE"));
  } else {
    line_.text(names_.name("HKEY", key));
  }
}

void ValueEncoder::chosen(const CEPROPVAL& property) {
  if ((property.wFlags & CEDB_PROPDELETE) != 0) return line_.null();
  const CEVALUNION& val = property.val;
  switch (static_cast<WORD>(property.propid)) {
    case CEVT_I2:
      return value(val.iVal);
    case CEVT_I4:
      return value(val.lVal);
    case CEVT_R8:
      return value(val.dblVal);
    case CEVT_BOOL:
      return value(val.boolVal);
    case CEVT_UI2:
      return value(val.uiVal);
    case CEVT_LPWSTR:
      return text(val.lpwstr);
    case CEVT_FILETIME:
      return value(val.filetime);
    case CEVT_BLOB:
      return value(val.blob);
    default:
      return value(val.ulVal);
  }
}

void ValueEncoder::chosen(const SPropValue& property) {
  const SPropValueUnion& val = property.Value;
  switch (property.ulPropTag & 0xFFFF) {
    case PT_LONG:
      return value(val.l);
    case PT_DOUBLE:
      return value(val.dbl);
    case PT_BOOLEAN:
      return value(val.b);
    case PT_UNICODE:
      return text(val.lpszW);
    case PT_SYSTIME:
      return value(val.ft);
    case PT_CLSID:
      return value(val.lpguid);
    case PT_BINARY:
      return value(val.bin);
    default:
      return value(val.ul);
  }
}

void ValueEncoder::chosen(const MAPINAMEID& name) {
  name.ulKind == MNID_STRING ? text(name.Kind.lpwstrName) : value(name.Kind.lID);
}

}  // namespace emulator
