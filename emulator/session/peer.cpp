#include "emulator/session/peer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace emulator {

namespace {

bool isSocket(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
}

bool isTransient(int error) {
  return error == EINTR || error == EAGAIN;
}

/// What came before a failure is delivered; the failure shows at the next attempt.
std::ptrdiff_t failedAfter(std::size_t received) {
  return received > 0 ? static_cast<std::ptrdiff_t>(received) : -1;
}

}  // namespace

Peer::Peer(int in, int out, int stop) : in_(in), out_(out), stop_(stop), outIsSocket_(isSocket(out)) {}

bool Peer::wait(int descriptor, short event) const {
  std::array<pollfd, 2> waited{{{descriptor, event, 0}, {stop_, POLLIN, 0}}};
  while (poll(waited.data(), waited.size(), -1) < 0) {
    if (errno != EINTR) return false;
  }
  return waited[1].revents == 0;
}

std::ptrdiff_t Peer::receive(std::span<std::uint8_t> buffer) {
  std::size_t done = 0;
  while (done < buffer.size()) {
    if (!wait(in_, POLLIN)) return failedAfter(done);
    const ssize_t count = read(in_, &buffer[done], buffer.size() - done);
    if (count == 0) break;
    if (count > 0) {
      done += static_cast<std::size_t>(count);
    } else if (!isTransient(errno)) {
      return failedAfter(done);
    }
  }
  return static_cast<std::ptrdiff_t>(done);
}

std::ptrdiff_t Peer::sendSome(std::span<const std::uint8_t> bytes) const {
  if (outIsSocket_) return ::send(out_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  // A pipe that can be written to has room for this much, so that the write doesn't wait.
  return write(out_, bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
}

bool Peer::send(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    if (!wait(out_, POLLOUT)) return false;
    const std::ptrdiff_t count = sendSome(bytes);
    if (count >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    } else if (!isTransient(errno)) {
      return false;
    }
  }
  return true;
}

}  // namespace emulator
