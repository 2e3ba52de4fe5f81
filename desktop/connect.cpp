#include "desktop/connect.h"

#include <cerrno>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>

#include "desktop/device_error.h"
#include "desktop/host_port.h"
#include "desktop/input_error.h"

namespace desktop {

namespace {

constexpr std::string_view kUnixPrefix = "unix:";

/// 0 when the connection stands, else the error.
int connectSocket(int socket, const sockaddr* address, socklen_t size, Seconds timeout) {
  if (::connect(socket, address, size) == 0) return 0;
  if (errno != EINPROGRESS && errno != EINTR) return errno;
  if (!awaitDescriptor(socket, POLLOUT, timeout)) return ETIMEDOUT;
  int error = 0;
  socklen_t errorSize = sizeof error;
  return ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &errorSize) == 0 ? error : errno;
}

[[noreturn]] void failToConnect(const std::string& address, const char* why) {
  throw NoDevice("no device at " + address + ": " + why);
}

Descriptor connectUnix(const std::string& address, Seconds timeout) {
  const std::string path = address.substr(kUnixPrefix.size());
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof name.sun_path) {
    throw InputError("address '" + address + "': the path must have 1 to " +
                     std::to_string(sizeof name.sun_path - 1) + " bytes");
  }
  std::memcpy(name.sun_path, path.data(), path.size());
  Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!socket) failToConnect(address, std::strerror(errno));
  const int error =
      connectSocket(socket.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name, timeout);
  if (error != 0) failToConnect(address, std::strerror(error));
  return socket;
}

HostPort splitAddress(const std::string& address) {
  const auto parts = splitHostPort(address);
  if (!parts || parts->port == 0) {
    throw InputError("address '" + address + "' is neither HOST:PORT nor unix:PATH");
  }
  return *parts;
}

struct FreeAddresses {
  void operator()(addrinfo* addresses) const { ::freeaddrinfo(addresses); }
};

Descriptor connectTcp(const std::string& address, Seconds timeout) {
  const HostPort parts = splitAddress(address);
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error =
          ::getaddrinfo(parts.host.c_str(), std::to_string(parts.port).c_str(), &hints, &found)) {
    failToConnect(address, ::gai_strerror(error));
  }
  const std::unique_ptr<addrinfo, FreeAddresses> addresses(found);
  int error = 0;
  for (const addrinfo* entry = addresses.get(); entry != nullptr; entry = entry->ai_next) {
    Descriptor socket(::socket(entry->ai_family, entry->ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket) {
      error = errno;
      continue;
    }
    error = connectSocket(socket.get(), entry->ai_addr, entry->ai_addrlen, timeout);
    if (error != 0) continue;
    // A request is small and waits for its reply: held back to be joined with the next one, it would cost 40
    // ms.
    const int on = 1;
    ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return socket;
  }
  failToConnect(address, std::strerror(error));
}

}  // namespace

std::unique_ptr<Stream> connectTo(const std::string& address, Seconds timeout) {
  const bool isPath = address.starts_with(kUnixPrefix);
  Descriptor socket = isPath ? connectUnix(address, timeout) : connectTcp(address, timeout);
  return std::make_unique<SocketStream>(std::move(socket), address, timeout);
}

}  // namespace desktop
