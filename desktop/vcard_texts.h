// Properties of a card that are one text, or one day, of the contact each; and those made of several texts.
#pragma once

#include <vector>

#include "desktop/vcard_draft.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// Company, department, job, web page, relatives, days, categories, notes.
void readTexts(VcardDraft& draft);

void addTexts(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version);

}  // namespace desktop
