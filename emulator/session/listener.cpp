#include "emulator/session/listener.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include "emulator/session/session_error.h"

namespace emulator {

namespace {

constexpr std::string_view kUnixPrefix = "unix:";
// Sessions are not authenticated, so nobody outside this machine may open one.
constexpr std::string_view kLoopbackPrefix = "127.0.0.1:";
constexpr int kWaitingDesktops = 16;

template <typename Address>
const sockaddr* general(const Address& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

bool isSocketFile(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && S_ISSOCK(status.st_mode);
}

/// Whether a socket file was left behind by a program that is gone. Asked with a socket of another type, which is
/// refused either way: a server that is there must not take the question for a desktop.
bool isStale(const sockaddr_un& address) {
  if (!isSocketFile(address.sun_path)) return false;
  const Descriptor probe(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  return connect(probe.get(), general(address), sizeof address) != 0 && errno == ECONNREFUSED;
}

}  // namespace

Listener::Listener(const std::string& address) : address_(address) {
  if (address.starts_with(kUnixPrefix)) {
    path_ = address.substr(kUnixPrefix.size());
    listenOnPath();
  } else if (address.starts_with(kLoopbackPrefix)) {
    listenOnPort(address.substr(kLoopbackPrefix.size()));
  } else {
    fail("an address is 127.0.0.1:PORT or unix:PATH");
  }
}

Listener::~Listener() {
  if (!path_.empty() && socket_) unlink(path_.c_str());
}

void Listener::fail(const std::string& reason) const {
  throw SessionError(address_ + ": " + reason);
}

void Listener::listenOnPort(const std::string& port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::uint16_t number = 0;
  const char* const end = port.data() + port.size();
  if (const auto [stop, error] = std::from_chars(port.data(), end, number);
      error != std::errc{} || stop != end) {
    fail("a port is a number from 0 to 65535");
  }
  address.sin_port = htons(number);

  Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const int on = 1;
  setsockopt(socket.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  socklen_t size = sizeof address;
  if (bind(socket.get(), general(address), size) != 0 || listen(socket.get(), kWaitingDesktops) != 0 ||
      getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    fail(std::strerror(errno));
  }
  address_ = std::string(kLoopbackPrefix) + std::to_string(ntohs(address.sin_port));
  socket_ = std::move(socket);
}

void Listener::listenOnPath() {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path_.empty()) fail("the path is empty");
  if (path_.size() >= sizeof address.sun_path) fail("the path is too long for a socket");
  path_.copy(address.sun_path, path_.size());

  Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (isStale(address)) unlink(address.sun_path);
  if (bind(socket.get(), general(address), sizeof address) != 0 ||
      listen(socket.get(), kWaitingDesktops) != 0) {
    fail(std::strerror(errno));
  }
  socket_ = std::move(socket);
}

std::optional<Descriptor> Listener::accept(int stop) const {
  std::array<pollfd, 2> waited{{{socket_.get(), POLLIN, 0}, {stop, POLLIN, 0}}};
  while (true) {
    if (poll(waited.data(), waited.size(), -1) < 0 && errno != EINTR) fail(std::strerror(errno));
    if (waited[1].revents != 0) return std::nullopt;
    if (waited[0].revents == 0) continue;
    Descriptor desktop(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!desktop) continue;
    const int on = 1;  // a Unix socket has no such option and needs none
    setsockopt(desktop.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return desktop;
  }
}

}  // namespace emulator
