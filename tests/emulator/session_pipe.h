// Pipes and sockets between a test and what it tests.
#pragma once

#include <array>
#include <cstdint>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

#include "emulator/session/descriptor.h"

namespace emulator::testing {

using Message = std::vector<std::uint8_t>;

/// Bytes go in at `write` and come out at `read`.
struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    read = Descriptor(ends[0]);
    write = Descriptor(ends[1]);
  }
  Descriptor read;
  Descriptor write;
};

/// Two ends of one connection.
struct Link {
  explicit Link(int type = SOCK_STREAM) {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends.data()), 0);
    device = Descriptor(ends[0]);
    desktop = Descriptor(ends[1]);
  }
  Descriptor device;
  Descriptor desktop;
};

inline void put(const Descriptor& descriptor, const Message& bytes) {
  ASSERT_EQ(::write(descriptor.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

/// As many bytes as asked for, or fewer when the other side has closed.
inline Message get(const Descriptor& descriptor, std::size_t count) {
  Message bytes(count);
  std::size_t done = 0;
  while (done < count) {
    const ssize_t more = ::read(descriptor.get(), &bytes[done], count - done);
    if (more <= 0) break;
    done += static_cast<std::size_t>(more);
  }
  bytes.resize(done);
  return bytes;
}

/// What is there already.
inline Message getAvailable(const Descriptor& descriptor) {
  Message bytes(1 << 20);
  const ssize_t count = ::recv(descriptor.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
  return bytes;
}

}  // namespace emulator::testing
