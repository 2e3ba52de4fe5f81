// Postal addresses of a card.
#pragma once

#include <vector>

#include "desktop/vcard_draft.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// A post-office box and what stands before the street become lines of the street.
void readAddresses(VcardDraft& draft);

void addAddresses(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version);

}  // namespace desktop
