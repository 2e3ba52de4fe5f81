#include "channel/request_reader.h"

#include <cstring>
#include <string>

#include "channel/wire.h"

namespace qorv {

RequestText::RequestText(const BYTE* bytes, DWORD byteCount)
    : characters_(std::make_unique<WCHAR[]>(std::size_t{byteCount} + 1)) {
  std::memcpy(characters_.get(), bytes, byteCount);
}

std::size_t RequestText::length() const {
  return characters_ ? std::char_traits<WCHAR>::length(characters_.get()) : 0;
}

const BYTE* RequestReader::ReadBytes(const BYTE* cursor, DWORD& position, DWORD size) {
  const auto available = static_cast<std::size_t>(end_ - cursor);
  if (position > available || size > available - position) {
    cut_ = true;
    position = static_cast<DWORD>(available);
    return nullptr;
  }
  const BYTE* at = cursor + position;
  position += size;
  return at;
}

BYTE RequestReader::ReadByte(const BYTE* cursor, DWORD& position) {
  const BYTE* at = ReadBytes(cursor, position, 1);
  return at ? *at : BYTE{0};
}

DWORD RequestReader::ReadDword(const BYTE* cursor, DWORD& position) {
  const BYTE* at = ReadBytes(cursor, position, sizeof(DWORD));
  return at ? loadDword(at) : 0;
}

SYSTEMTIME RequestReader::ReadSystemTime(const BYTE* cursor, DWORD& position, TimeMode mode) {
  const BYTE* at = ReadBytes(cursor, position, kSystemTimeSize);
  SYSTEMTIME time = at ? loadSystemTime(at) : SYSTEMTIME{};
  if (mode == TimeMode::DateOnly) time.wHour = time.wMinute = time.wSecond = 0;
  return time;
}

RequestText RequestReader::ReadString(const BYTE* cursor, DWORD& position) {
  const DWORD byteCount = ReadDword(cursor, position);
  const BYTE* at = ReadBytes(cursor, position, byteCount);
  return at ? RequestText(at, byteCount) : RequestText(cursor, 0);
}

}  // namespace qorv
