// Names of a card: its parts (N), what is shown (FN), and what the device files the contact by.
#pragma once

#include <string>
#include <vector>

#include "desktop/vcard_draft.h"

namespace desktop {

/// What a card shows a contact as, which it must say: the name's parts, else the company, an e-mail address, a
/// phone number; "(no name)" when it has none of them.
std::u16string nameShown(const Contact& contact);

/// Reads the names, once the company, the e-mail addresses and the phone numbers are read. Throws ItemRefused
/// when the card names nobody, or more than one.
void readNames(VcardDraft& draft);

/// The part N.
VcardProperty nameProperty(const Contact& contact);

}  // namespace desktop
