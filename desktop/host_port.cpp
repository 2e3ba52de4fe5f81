#include "desktop/host_port.h"

#include <charconv>

namespace desktop {

std::optional<HostPort> splitHostPort(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string::npos || colon == 0) return std::nullopt;
  HostPort parts{text.substr(0, colon), 0};
  const bool isBracketed = parts.host.starts_with('[') && parts.host.ends_with(']');
  if (isBracketed) parts.host = parts.host.substr(1, parts.host.size() - 2);
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data() + colon + 1, last, parts.port);
  if (error != std::errc() || end != last) return std::nullopt;
  return parts;
}

}  // namespace desktop
