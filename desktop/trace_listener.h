// Receives the trace of an agent: one datagram a message, its characters as UTF-16LE and nothing else.
#pragma once

#include <cstdint>
#include <string>

#include "desktop/descriptor.h"

namespace desktop {

struct TraceMessage {
  std::string from;     ///< `127.0.0.1:40123`
  std::u16string text;  ///< of whole characters
  bool isOdd = false;   ///< half a character came behind the text: no agent sent this
};

class TraceListener {
 public:
  /// Listens on `HOST:PORT`; port 0 is any free one. Throws InputError when the address has another form or
  /// can't be listened on.
  explicit TraceListener(const std::string& address);

  /// Where it listens, as `HOST:PORT`.
  [[nodiscard]] std::string address() const;
  /// Becomes readable when there is a message.
  [[nodiscard]] int descriptor() const { return socket_.get(); }
  /// Waits for the next message. Throws std::system_error when the socket fails.
  TraceMessage receive();

 private:
  Descriptor socket_;
};

}  // namespace desktop
