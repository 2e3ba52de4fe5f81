// A contact as people have them: a dozen fields.
#pragma once

#include "desktop/contact.h"
#include "emulator/device.h"

namespace bench {

/// Every number makes another one.
desktop::Contact sampleContact(int number);

/// Puts the properties that the contact has on the device. Throws std::runtime_error when one is refused.
void putSample(emulator::Device& device, emulator::ItemRecord& record, const desktop::Contact& contact);

}  // namespace bench
