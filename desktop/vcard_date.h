// Days of a card: birthdays and anniversaries, as the versions spell them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "desktop/local_time.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// Reads `1970-05-01`, `19700501`, and either with a time of day, of which a zone is passed over: a person's
/// birthday stays the same day everywhere. Nothing for any other text, a day without its year among them.
std::optional<LocalTime> readVcardDate(std::string_view text);

/// A day, with its time of day only when there is one.
std::string spellVcardDate(const LocalTime& time, VcardVersion version);

}  // namespace desktop
