// Length-prefixed messages over a socket, as the benchmarks' requester sends and receives them.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace bench {

using Payload = std::vector<std::uint8_t>;

/// Length word and payload in one send. Throws std::system_error.
void sendFrame(int socket, std::span<const std::uint8_t> payload);
/// The next payload; false at the end of the stream.
bool receiveFrame(int socket, Payload& payload);

/// A request with numbers of 32 bits as arguments.
Payload request(unsigned command, unsigned type, std::initializer_list<std::uint32_t> arguments = {});
std::uint32_t numberAt(const Payload& payload, std::size_t offset);

}  // namespace bench
