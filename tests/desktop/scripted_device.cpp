// A device for command-line tests: on standard input and output it expects the requests of a script and gives
// its replies. Ends with status 9 when it is asked for anything else.
//
//   > BYTES        the next request must be this payload
//   < BYTES        answer this payload
//   << BYTES       put this on the stream as it is
//   silence        answer nothing more
//   exit N         end here, with this status
//   # anything     a remark
//
// BYTES are two hexadecimal digits each, u32:N, zeros:N, s'text' (as a request has a text) and d'text' (as
// the device has it, with its NUL).

#include <cstdint>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>

#include "tests/desktop/wire_bytes.h"

namespace {

using namespace wire_bytes;

constexpr int kWrongRequest = 9;

std::uint32_t numberAfter(const std::string& token, const std::string& prefix) {
  return static_cast<std::uint32_t>(std::stoul(token.substr(prefix.size())));
}

Bytes bytesOf(const std::string& token) {
  if (token.starts_with("u32:")) return u32(numberAfter(token, "u32:"));
  if (token.starts_with("zeros:")) return zeros(numberAfter(token, "zeros:"));
  if (token.size() >= 3 && token[1] == '\'') {
    const std::u16string text(token.begin() + 2, token.end() - 1);
    return token.front() == 'd' ? deviceText(text) : sentText(text);
  }
  return hex(token);
}

/// Tokens are parted by blanks, except within a text.
Bytes parse(const std::string& line) {
  Bytes bytes;
  std::string token;
  bool inText = false;
  for (const char letter : line + " ") {
    if (letter == '\'') inText = !inText;
    if (letter != ' ' || inText) {
      token += letter;
    } else if (!token.empty()) {
      bytes = bytes + bytesOf(token);
      token.clear();
    }
  }
  return bytes;
}

Bytes take(std::size_t count) {
  std::string room(count, '\0');
  std::cin.read(room.data(), static_cast<std::streamsize>(count));
  room.resize(static_cast<std::size_t>(std::cin.gcount()));
  return {room.begin(), room.end()};
}

void give(const Bytes& bytes) {
  std::cout.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()))
      .flush();
}

bool isAsked(const Bytes& expected) {
  const Bytes length = u32(static_cast<std::uint32_t>(expected.size()));
  if (take(length.size()) == length && take(expected.size()) == expected) return true;
  std::cerr << "scripted_device: another request was expected\n";
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  std::ifstream script(argc > 1 ? argv[1] : "");
  for (std::string line; std::getline(script, line);) {
    if (line.starts_with("> ") && !isAsked(parse(line.substr(2)))) return kWrongRequest;
    if (line.starts_with("< ")) {
      const Bytes reply = parse(line.substr(2));
      give(u32(static_cast<std::uint32_t>(reply.size())) + reply);
    }
    if (line.starts_with("<< ")) give(parse(line.substr(3)));
    if (line == "silence") std::cin.ignore(std::numeric_limits<std::streamsize>::max());
    if (line.starts_with("exit ")) return static_cast<int>(numberAfter(line, "exit "));
  }
  // Something that is left to read is a request too many.
  return take(1).empty() ? 0 : kWrongRequest;
}
