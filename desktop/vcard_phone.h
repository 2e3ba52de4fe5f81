// Phone numbers of a card: which of the device's places each belongs to.
#pragma once

#include <vector>

#include "desktop/vcard_draft.h"
#include "desktop/vcard_version.h"

namespace desktop {

void readPhones(VcardDraft& draft);

void addPhones(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version);

}  // namespace desktop
