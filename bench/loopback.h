// A connected pair of TCP sockets on the loopback interface, without delay.
#pragma once

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <system_error>

#include "emulator/session/descriptor.h"

namespace bench {

struct Loopback {
  emulator::Descriptor requester;
  emulator::Descriptor server;
};

inline void check(bool succeeded, const char* what) {
  if (!succeeded) throw std::system_error(errno, std::generic_category(), what);
}

inline Loopback connectLoopback() {
  const emulator::Descriptor listener(socket(AF_INET, SOCK_STREAM, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  check(bind(listener.get(), generic, size) == 0, "bind");
  check(listen(listener.get(), 1) == 0, "listen");
  check(getsockname(listener.get(), generic, &size) == 0, "getsockname");
  Loopback pair{emulator::Descriptor(socket(AF_INET, SOCK_STREAM, 0)), {}};
  check(connect(pair.requester.get(), generic, size) == 0, "connect");
  pair.server = emulator::Descriptor(accept(listener.get(), nullptr, nullptr));
  const int on = 1;
  for (const int end : {pair.requester.get(), pair.server.get()}) {
    check(setsockopt(end, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on)) == 0, "TCP_NODELAY");
  }
  return pair;
}

}  // namespace bench
