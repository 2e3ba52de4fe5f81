#include "tests/support/scripted_stream.h"

#include <algorithm>
#include <cstring>

#include "platform/errors.h"

namespace test {

std::vector<Bytes> ScriptedStream::replies() const {
  Bytes all;
  for (const Bytes& write : writes_) all.append(write);
  std::vector<Bytes> payloads;
  for (std::size_t at = 0; at < all.size();) {
    const DWORD length = all.dwordAt(at);
    payloads.push_back(all.slice(at + 4, length));
    at += 4 + std::size_t{length};
  }
  return payloads;
}

HRESULT ScriptedStream::QueryInterface(REFIID, void** object) {
  *object = nullptr;
  return E_NOINTERFACE;
}

HRESULT ScriptedStream::Read(void* buffer, ULONG count, ULONG* bytesRead) {
  beforeRead_();
  readSizes_.push_back(count);
  const std::size_t left = script_.size() - position_;
  const std::size_t size = std::min({std::size_t{count}, std::size_t{pieceSize_}, left});
  if (size != 0) std::memcpy(buffer, script_.data() + position_, size);
  position_ += size;
  *bytesRead = static_cast<ULONG>(size);
  return S_OK;
}

HRESULT ScriptedStream::Write(const void* buffer, ULONG count, ULONG* bytesWritten) {
  if (writes_.size() >= firstFailingWrite_) return E_FAIL;
  const auto* bytes = static_cast<const BYTE*>(buffer);
  writes_.emplace_back(count == 0 ? std::vector<BYTE>() : std::vector<BYTE>(bytes, bytes + count));
  *bytesWritten = count;
  return S_OK;
}

Bytes frame(const Bytes& payload) {
  return Bytes().u32(payload.size()).append(payload);
}

}  // namespace test
