#include "desktop/socket_stream.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>

#include "desktop/device_error.h"

namespace desktop {

namespace {

bool isGone(int error) {
  return error == ECONNRESET || error == EPIPE;
}
bool isPassing(int error) {
  return error == EINTR || error == EAGAIN || error == EWOULDBLOCK;
}

}  // namespace

bool awaitDescriptor(int descriptor, short events, Seconds timeout) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + timeout;
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd entry{descriptor, events, 0};
    const int ready = ::poll(&entry, 1, left > 0 ? static_cast<int>(left) : 0);
    if (ready > 0) return true;
    if (ready == 0) return false;
    if (errno != EINTR) throw NoDevice(std::string("can't wait for the device: ") + std::strerror(errno));
  }
}

void SocketStream::await(short events) {
  if (!awaitDescriptor(socket_.get(), events, timeout_)) {
    throw NoDevice(name_ + " gives no answer within " + std::to_string(timeout_.count()) + " seconds");
  }
}

void SocketStream::write(BytesView bytes) {
  while (!bytes.empty()) {
    await(POLLOUT);
    const ssize_t sent = ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(sent));
    } else if (isGone(errno)) {
      throw NoDevice(endReason() + " without an answer");
    } else if (!isPassing(errno)) {
      throw NoDevice(name_ + ": " + std::strerror(errno));
    }
  }
}

std::size_t SocketStream::read(std::span<std::uint8_t> room) {
  for (;;) {
    await(POLLIN);
    const ssize_t got = ::recv(socket_.get(), room.data(), room.size(), MSG_DONTWAIT);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (isGone(errno)) return 0;
    if (!isPassing(errno)) throw NoDevice(name_ + ": " + std::strerror(errno));
  }
}

void SocketStream::finish() {
  socket_.reset();
}

std::string SocketStream::endReason() {
  return name_ + " closed the connection";
}

}  // namespace desktop
