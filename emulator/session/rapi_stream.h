// The stream that the agent is given: requests come in, whole replies go out.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "emulator/session/peer.h"
#include "emulator/system/unsupported_stream.h"

namespace emulator {

/// The device's unit of work, as the stream sees it.
struct UnitOfWork {
  std::function<void()> commit;
  std::function<void()> rollback;
};

/// A reply is a 32-bit length, low byte first, and that many bytes. The agent writes the two one after the
/// other; they leave together when both are there, once what the request changed is committed. The stream
/// begins with one reference, the agent's; who made it ends it, whether the agent released it or not.
class RapiStream final : public UnsupportedRapiStream {
 public:
  RapiStream(Peer peer, UnitOfWork work) : peer_(peer), work_(std::move(work)) {}
  RapiStream(const RapiStream&) = delete;
  RapiStream& operator=(const RapiStream&) = delete;
  ~RapiStream() = default;

  /// The agent has returned: commits what it did beside its requests, undoes what it did for a request that
  /// it left without a reply. Throws what the unit of work throws.
  void finish();

  ULONG references() const { return references_; }
  /// Why the device's file failed; empty when it did not. The stream is dead from then on.
  const std::string& deviceFailure() const { return deviceFailure_; }

  HRESULT QueryInterface(REFIID iid, void** object) override;
  ULONG AddRef() override { return ++references_; }
  /// What was written and is no whole reply is sent.
  ULONG Release() override;

  /// Blocks until `count` bytes or the end came. At the end it succeeds with fewer bytes, or none.
  HRESULT Read(void* buffer, ULONG count, ULONG* bytesRead) override;
  /// Succeeds when the bytes are taken. A desktop that is gone shows at the end of a reply.
  HRESULT Write(const void* buffer, ULONG count, ULONG* bytesWritten) override;

 private:
  std::size_t completeReplies() const;
  bool send(std::size_t size);
  bool commit();

  Peer peer_;
  UnitOfWork work_;
  std::vector<std::uint8_t> written_;  ///< taken from the agent and not sent yet
  bool midRequest_ = false;            ///< something of a request was read, and no reply followed
  bool dead_ = false;
  ULONG references_ = 1;
  std::string deviceFailure_;
};

}  // namespace emulator
