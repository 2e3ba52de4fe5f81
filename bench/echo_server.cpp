#include "bench/echo_server.h"

#include <utility>

namespace bench {

EchoServer::EchoServer(Payload reply)
    : reply_(std::move(reply)), pair_(connectLoopback()), thread_([this] {
        Payload request;
        while (receiveFrame(pair_.server.get(), request)) sendFrame(pair_.server.get(), reply_);
      }) {}

EchoServer::~EchoServer() {
  shutdown(pair_.requester.get(), SHUT_RDWR);
  thread_.join();
}

}  // namespace bench
