// A remote-API stream for tests: reads from a script, in pieces of a given size, and keeps what is written.
#pragma once

#include <functional>
#include <vector>

#include "emulator/system/unsupported_stream.h"
#include "tests/support/bytes.h"

namespace test {

class ScriptedStream final : public emulator::UnsupportedRapiStream {
 public:
  explicit ScriptedStream(Bytes script, ULONG pieceSize = ~ULONG{0})
      : script_(std::move(script)), pieceSize_(pieceSize) {}

  /// Every write as it came.
  [[nodiscard]] const std::vector<Bytes>& writes() const { return writes_; }
  /// The payloads of the length-prefixed messages that were written.
  [[nodiscard]] std::vector<Bytes> replies() const;
  /// The sizes that were asked for, call by call.
  [[nodiscard]] const std::vector<ULONG>& readSizes() const { return readSizes_; }
  [[nodiscard]] ULONG references() const { return references_; }
  /// What the device does when it waits for the next bytes of a request: it has answered the one before.
  void setBeforeRead(std::function<void()> action) { beforeRead_ = std::move(action); }
  void failWritesFrom(std::size_t index) { firstFailingWrite_ = index; }

  HRESULT QueryInterface(REFIID iid, void** object) override;
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override { return --references_; }
  HRESULT Read(void* buffer, ULONG count, ULONG* bytesRead) override;
  HRESULT Write(const void* buffer, ULONG count, ULONG* bytesWritten) override;

 private:
  Bytes script_;
  ULONG pieceSize_;
  std::size_t position_ = 0;
  std::function<void()> beforeRead_ = [] {};
  std::size_t firstFailingWrite_ = ~std::size_t{0};
  std::vector<Bytes> writes_;
  std::vector<ULONG> readSizes_;
  ULONG references_ = 1;
};

/// Length word and payload.
Bytes frame(const Bytes& payload);

}  // namespace test
