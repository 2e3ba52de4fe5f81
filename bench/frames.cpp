#include "bench/frames.h"

#include <cerrno>
#include <sys/socket.h>
#include <system_error>

namespace bench {
namespace {

void appendNumber(Payload& bytes, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

bool receiveAll(int socket, std::span<std::uint8_t> buffer) {
  while (!buffer.empty()) {
    const ssize_t count = recv(socket, buffer.data(), buffer.size(), MSG_WAITALL);
    if (count <= 0) return false;
    buffer = buffer.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

void sendFrame(int socket, std::span<const std::uint8_t> payload) {
  Payload bytes;
  bytes.reserve(payload.size() + 4);
  appendNumber(bytes, static_cast<std::uint32_t>(payload.size()));
  bytes.insert(bytes.end(), payload.begin(), payload.end());
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t count = send(socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count < 0) throw std::system_error(errno, std::generic_category(), "send");
    sent += static_cast<std::size_t>(count);
  }
}

bool receiveFrame(int socket, Payload& payload) {
  Payload length(4);
  if (!receiveAll(socket, length)) return false;
  payload.resize(numberAt(length, 0));
  return receiveAll(socket, payload);
}

Payload request(unsigned command, unsigned type, std::initializer_list<std::uint32_t> arguments) {
  Payload bytes{static_cast<std::uint8_t>(command), static_cast<std::uint8_t>(type)};
  for (const std::uint32_t argument : arguments) appendNumber(bytes, argument);
  return bytes;
}

std::uint32_t numberAt(const Payload& payload, std::size_t offset) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | payload.at(offset + static_cast<std::size_t>(i));
  return value;
}

}  // namespace bench
