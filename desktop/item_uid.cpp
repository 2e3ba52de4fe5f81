#include "desktop/item_uid.h"

#include <charconv>
#include <cstdio>

#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::string_view kNoIdentity = "unnamed";

bool isPlain(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
         byte == '-' || byte == '.' || byte == '_';
}

std::string prefixOf(const ItemKind& kind) {
  return std::string(kind.singular) + "-";
}

/// Identities are free text; a UID shouldn't need escaping anywhere.
std::string hostPart(std::u16string_view identity) {
  if (identity.empty()) return std::string(kNoIdentity);
  std::string host;
  for (const char byte : toUtf8(identity)) {
    char spelled[4] = {byte, '\0', '\0', '\0'};
    if (!isPlain(byte)) std::snprintf(spelled, sizeof spelled, "%%%02X", static_cast<unsigned char>(byte));
    host += spelled;
  }
  return host;
}

}  // namespace

std::string itemUid(const ItemKind& kind, std::u16string_view deviceIdentity, std::uint32_t oid) {
  return prefixOf(kind) + std::to_string(oid) + "@" + hostPart(deviceIdentity);
}

std::optional<std::uint32_t> oidOfUid(const ItemKind& kind, std::u16string_view deviceIdentity,
                                      std::string_view uid) {
  const std::string prefix = prefixOf(kind);
  if (deviceIdentity.empty() || !uid.starts_with(prefix)) return std::nullopt;
  std::uint32_t oid = 0;
  const auto [end, error] = std::from_chars(uid.data() + prefix.size(), uid.data() + uid.size(), oid);
  // Spelled again, it must be the same: no leading zeros, no other device.
  if (error != std::errc() || oid == 0 || uid != itemUid(kind, deviceIdentity, oid)) return std::nullopt;
  return oid;
}

}  // namespace desktop
