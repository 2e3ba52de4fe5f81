#include "desktop/record_field.h"

#include "desktop/device_error.h"
#include "desktop/local_time.h"

namespace desktop {

namespace {

/// "appointment 18"
std::string spellItem(std::string_view singular, std::uint32_t oid) {
  return std::string(singular) + " " + std::to_string(oid);
}

}  // namespace

std::uint8_t readRecordHeader(WireReader& reader, std::string_view singular, std::uint32_t oid) {
  const std::uint8_t result = reader.byte();
  reader.byte();
  const std::uint32_t sent = reader.number();
  if (result != 1 || sent != oid) {
    throw ProtocolError(spellItem(singular, oid) + " was asked for, the device sends a record of " +
                        std::to_string(sent) + " with result " + std::to_string(result));
  }
  return reader.byte();
}

LocalTime readTimeOrNone(WireReader& reader, std::string_view singular, std::uint32_t oid,
                         std::string_view name) {
  const LocalTime time = noneIfNoDate(reader.time());
  if (isNone(time) || isValid(time)) return time;
  throw ProtocolError(spellItem(singular, oid) + " has no valid " + std::string(name));
}

void refuseField(std::string_view singular, std::uint32_t oid, std::uint32_t tag) {
  throw ProtocolError(spellItem(singular, oid) + " came with a field " + std::to_string(tag) +
                      " that such a record can't have");
}

void refuseLack(std::string_view singular, std::uint32_t oid, std::string_view name) {
  throw ProtocolError(spellItem(singular, oid) + " came without its " + std::string(name));
}

}  // namespace desktop
