// Network addresses as a person writes them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace desktop {

struct HostPort {
  std::string host;
  std::uint16_t port = 0;
};

/// Of `HOST:PORT`, the host in brackets when it has colons itself; nothing for a text of another form.
std::optional<HostPort> splitHostPort(const std::string& text);

}  // namespace desktop
