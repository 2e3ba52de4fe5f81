// The two-way byte stream to a device, however it is reached.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "desktop/wire.h"

namespace desktop {

class Stream {
 public:
  virtual ~Stream() = default;

  /// Hands all bytes over in one piece. Throws NoDevice when the other side is gone or takes nothing in time.
  virtual void write(BytesView bytes) = 0;

  /// Reads at least one byte and at most `room` holds; 0 at the end of the stream. Throws NoDevice when
  /// nothing arrives in time.
  virtual std::size_t read(std::span<std::uint8_t> room) = 0;

  /// Lets the other side finish after the session's end and waits for it, as far as it can be waited for.
  virtual void finish() = 0;

  /// Why the stream came to its end, as one clause: `127.0.0.1:4000 closed the connection`.
  virtual std::string endReason() = 0;
};

}  // namespace desktop
