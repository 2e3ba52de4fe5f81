#include "emulator/session/rapi_stream.h"

#include <exception>
#include <span>

#include "platform/errors.h"

namespace emulator {

namespace {

constexpr std::size_t kLengthBytes = 4;

std::size_t lengthAt(std::span<const std::uint8_t> bytes) {
  return bytes[0] | (std::size_t{bytes[1]} << 8) | (std::size_t{bytes[2]} << 16) |
         (std::size_t{bytes[3]} << 24);
}

void store(ULONG* count, std::size_t value) {
  if (count != nullptr) *count = static_cast<ULONG>(value);
}

}  // namespace

HRESULT RapiStream::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  for (const IID& known : {IUnknown::kIid, ISequentialStream::kIid, IStream::kIid, IRAPIStream::kIid}) {
    if (iid == known) *object = this;
  }
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG RapiStream::Release() {
  const ULONG left = --references_;
  if (left == 0) send(written_.size());
  return left;
}

bool RapiStream::commit() {
  try {
    work_.commit();
    return true;
  } catch (const std::exception& error) {
    deviceFailure_ = error.what();
    dead_ = true;
    return false;
  }
}

bool RapiStream::send(std::size_t size) {
  if (size == 0) return !dead_;
  if (dead_ || !commit()) return false;
  midRequest_ = false;
  dead_ = !peer_.send(std::span(written_).first(size));
  written_.erase(written_.begin(), written_.begin() + static_cast<std::ptrdiff_t>(size));
  return !dead_;
}

/// How many of the bytes taken make up whole replies.
std::size_t RapiStream::completeReplies() const {
  std::size_t complete = 0;
  while (written_.size() - complete >= kLengthBytes) {
    const std::size_t next = complete + kLengthBytes + lengthAt(std::span(written_).subspan(complete));
    if (next > written_.size()) break;
    complete = next;
  }
  return complete;
}

HRESULT RapiStream::Read(void* buffer, ULONG count, ULONG* bytesRead) {
  store(bytesRead, 0);
  if (!send(written_.size())) return E_FAIL;
  if (!midRequest_ && !commit()) return E_FAIL;
  const std::ptrdiff_t received = peer_.receive({static_cast<std::uint8_t*>(buffer), count});
  if (received < 0) return E_FAIL;
  if (received > 0) midRequest_ = true;
  store(bytesRead, static_cast<std::size_t>(received));
  return S_OK;
}

HRESULT RapiStream::Write(const void* buffer, ULONG count, ULONG* bytesWritten) {
  store(bytesWritten, 0);
  if (dead_) return E_FAIL;
  const auto* const bytes = static_cast<const std::uint8_t*>(buffer);
  written_.insert(written_.end(), bytes, bytes + count);
  if (!send(completeReplies())) return E_FAIL;
  store(bytesWritten, count);
  return S_OK;
}

void RapiStream::finish() {
  if (midRequest_ || !deviceFailure_.empty()) {
    work_.rollback();
  } else {
    work_.commit();
  }
}

}  // namespace emulator
