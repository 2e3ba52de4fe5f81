#include "desktop/device_info.h"

namespace desktop {

namespace {

// Neither request depends on the item type, but every request needs a valid one.
constexpr ItemType kAnyType = ItemType::Appointment;

}  // namespace

std::u16string readIdentity(Session& session) {
  const Bytes reply = session.request(Command::GetDeviceIdentity, kAnyType);
  WireReader reader(reply);
  reader.number();  // a fixed number of the protocol's, which says nothing about the device
  std::u16string identity = reader.text();
  reader.expectEnd();
  return identity;
}

bool supportsNotes(Session& session) {
  const Bytes reply = session.request(Command::GetPlatformLevel, kAnyType);
  WireReader reader(reply);
  const std::uint32_t level = reader.number();
  reader.expectEnd();
  return level != 0;
}

}  // namespace desktop
