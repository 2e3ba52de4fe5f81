// The birthday and the anniversary of a card.
#pragma once

#include <vector>

#include "desktop/vcard_draft.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// Days without their year, and those outside the device's calendar, are noted.
void readDates(VcardDraft& draft);

void addDates(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version);

}  // namespace desktop
