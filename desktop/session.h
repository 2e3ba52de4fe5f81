// One session with a device: request after request, one reply each, until the end command.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "desktop/stream.h"
#include "desktop/wire.h"

namespace desktop {

/// What one exchange was, for those who want to watch; sizes are payload bytes.
struct Exchange {
  Command command;
  ItemType type;
  std::size_t requestSize;
  std::size_t replySize;
  std::chrono::microseconds duration;
};

class Session {
 public:
  using Watcher = std::function<void(const Exchange&)>;

  explicit Session(std::unique_ptr<Stream> stream, Watcher watcher = {})
      : stream_(std::move(stream)), watcher_(std::move(watcher)) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  /// Ends the session if nobody did and the device still answers; the device serves nobody else before that.
  ~Session();

  /// Sends one request and gives its reply. Throws NoDevice when the stream ends or stays silent in front of
  /// the reply, ProtocolError when it ends inside it or the reply is longer than one can be.
  Bytes request(Command command, ItemType type, BytesView arguments = {});

  /// Sends the end command and waits for the other side to finish. Throws as `request` does, and
  /// DeviceRefusal when the other side says in its end that it failed.
  void end();

  /// Whether another request makes sense: the session has not ended, and all replies came whole.
  bool canAsk() const { return inStep_; }

 private:
  Bytes readReply();
  std::size_t readUpTo(std::span<std::uint8_t> room);

  std::unique_ptr<Stream> stream_;
  Watcher watcher_;
  bool inStep_ = true;  ///< the next byte of the stream is the first byte of a reply
};

}  // namespace desktop
