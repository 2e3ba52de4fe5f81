// E-mail addresses of a card.
#pragma once

#include <vector>

#include "desktop/vcard_draft.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// The preferred ones come first, the others in the card's order.
void readEmails(VcardDraft& draft);

/// The first one of several is the preferred one.
void addEmails(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version);

}  // namespace desktop
