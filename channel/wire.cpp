#include "channel/wire.h"

namespace qorv {

namespace {

// The order of the eight words on the wire.
constexpr std::array kSystemTimeWords{
    &SYSTEMTIME::wYear, &SYSTEMTIME::wMonth,  &SYSTEMTIME::wDayOfWeek, &SYSTEMTIME::wDay,
    &SYSTEMTIME::wHour, &SYSTEMTIME::wMinute, &SYSTEMTIME::wSecond,    &SYSTEMTIME::wMilliseconds,
};

}  // namespace

void storeWord(BYTE* at, WORD value) {
  at[0] = static_cast<BYTE>(value);
  at[1] = static_cast<BYTE>(value >> 8);
}

void storeDword(BYTE* at, DWORD value) {
  storeWord(at, static_cast<WORD>(value));
  storeWord(at + 2, static_cast<WORD>(value >> 16));
}

WORD loadWord(const BYTE* at) {
  return static_cast<WORD>(at[0] | (at[1] << 8));
}

DWORD loadDword(const BYTE* at) {
  return loadWord(at) | (DWORD{loadWord(at + 2)} << 16);
}

void storeSystemTime(BYTE* at, const SYSTEMTIME& time) {
  for (const auto word : kSystemTimeWords) {
    storeWord(at, time.*word);
    at += sizeof(WORD);
  }
}

SYSTEMTIME loadSystemTime(const BYTE* at) {
  SYSTEMTIME time{};
  for (const auto word : kSystemTimeWords) {
    time.*word = loadWord(at);
    at += sizeof(WORD);
  }
  return time;
}

std::array<BYTE, ItemReplyHeader::kSize> ItemReplyHeader::bytes() const {
  std::array<BYTE, kSize> bytes{result, status};
  storeDword(&bytes[2], oid);
  storeDword(&bytes[6], reference);
  return bytes;
}

std::array<BYTE, ListReplyHeader::kSize> ListReplyHeader::bytes() const {
  std::array<BYTE, kSize> bytes{result, status};
  storeDword(&bytes[2], count);
  bytes[6] = fieldCount;
  return bytes;
}

}  // namespace qorv
