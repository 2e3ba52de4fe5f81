#include "desktop/trace_listener.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>
#include <vector>

#include "desktop/host_port.h"
#include "desktop/input_error.h"

namespace desktop {

namespace {

/// No datagram is longer.
constexpr std::size_t kLongestDatagram = 65535;

struct FreeAddresses {
  void operator()(addrinfo* addresses) const { ::freeaddrinfo(addresses); }
};

using Addresses = std::unique_ptr<addrinfo, FreeAddresses>;

[[noreturn]] void refuse(const std::string& address, const char* why) {
  throw InputError("can't listen on '" + address + "': " + why);
}

Addresses resolve(const std::string& address) {
  const auto parts = splitHostPort(address);
  if (!parts) refuse(address, "it is not HOST:PORT");
  addrinfo hints{};
  hints.ai_socktype = SOCK_DGRAM;
  hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  addrinfo* found = nullptr;
  const int error = ::getaddrinfo(parts->host.c_str(), std::to_string(parts->port).c_str(), &hints, &found);
  if (error != 0) refuse(address, ::gai_strerror(error));
  return Addresses(found);
}

std::string spell(const sockaddr_storage& address, socklen_t size) {
  char host[NI_MAXHOST];
  char port[NI_MAXSERV];
  const int error = ::getnameinfo(reinterpret_cast<const sockaddr*>(&address), size, host, sizeof host, port,
                                  sizeof port, NI_NUMERICHOST | NI_NUMERICSERV);
  return error == 0 ? std::string(host) + ":" + port : std::string("?");
}

}  // namespace

TraceListener::TraceListener(const std::string& address) {
  const Addresses addresses = resolve(address);
  int error = 0;
  for (const addrinfo* entry = addresses.get(); entry != nullptr; entry = entry->ai_next) {
    socket_ = Descriptor(::socket(entry->ai_family, entry->ai_socktype | SOCK_CLOEXEC, entry->ai_protocol));
    if (socket_ && ::bind(socket_.get(), entry->ai_addr, entry->ai_addrlen) == 0) return;
    error = errno;
  }
  refuse(address, std::strerror(error));
}

std::string TraceListener::address() const {
  sockaddr_storage own{};
  socklen_t size = sizeof own;
  ::getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&own), &size);
  return spell(own, size);
}

TraceMessage TraceListener::receive() {
  std::vector<unsigned char> bytes(kLongestDatagram);
  sockaddr_storage sender{};
  socklen_t senderSize = sizeof sender;
  const ssize_t size = ::recvfrom(socket_.get(), bytes.data(), bytes.size(), 0,
                                  reinterpret_cast<sockaddr*>(&sender), &senderSize);
  if (size < 0) throw std::system_error(errno, std::generic_category(), "the trace's socket");
  TraceMessage message{spell(sender, senderSize), {}, size % 2 != 0};
  for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(size); i += 2) {
    message.text += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
  }
  return message;
}

}  // namespace desktop
