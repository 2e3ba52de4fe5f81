#include "channel/response_buffer.h"

#include <algorithm>
#include <cstring>

namespace qorv {

bool ResponseBuffer::fits(DWORD at, std::size_t size) {
  return at <= kResponseBufferSize && size <= kResponseBufferSize - at;
}

BYTE* ResponseBuffer::reserve(DWORD at, DWORD size) {
  highWater_ = std::max(highWater_, at + size);
  return bytes_.get() + at;
}

bool ResponseBuffer::write(DWORD at, std::span<const BYTE> bytes) {
  if (!fits(at, bytes.size())) return false;
  std::memcpy(reserve(at, static_cast<DWORD>(bytes.size())), bytes.data(), bytes.size());
  return true;
}

void ResponseBuffer::clear() {
  std::memset(bytes_.get(), 0, highWater_);
  highWater_ = 0;
}

}  // namespace qorv
