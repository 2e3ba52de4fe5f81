// The floor under a request: a server that answers every request with bytes that it has ready.
#pragma once

#include <thread>

#include "bench/frames.h"
#include "bench/loopback.h"

namespace bench {

/// Serves from a thread of its own until it is destroyed.
class EchoServer {
 public:
  explicit EchoServer(Payload reply);
  ~EchoServer();

  [[nodiscard]] int socket() const { return pair_.requester.get(); }

 private:
  Payload reply_;
  Loopback pair_;
  std::thread thread_;
};

}  // namespace bench
