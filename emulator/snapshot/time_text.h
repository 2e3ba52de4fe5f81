// Times as snapshots write them: local ones for items, UTC ones for files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulator/system/file_time.h"

namespace emulator {

/// "YYYY-MM-DDTHH:MM:SS.mmm", local, for a DATE's number (days since 1899-12-30; before that day the fraction
/// counts forward all the same). Rounded to milliseconds.
std::string localText(double date);
/// Nothing for any other form, and for a date that does not exist.
std::optional<double> parseLocal(std::string_view text);

/// "YYYY-MM-DDTHH:MM:SS.mmmZ". The rest of a millisecond is dropped.
std::string utcText(Ticks time);
/// Nothing for any other form, for a date that does not exist, or one before 1601.
std::optional<Ticks> parseUtc(std::string_view text);

/// As utcText with seven digits behind the seconds, so that nothing is dropped. Nothing for a time whose year
/// has not four digits, and parsePreciseUtc as parseUtc.
std::optional<std::string> preciseUtcText(Ticks time);
std::optional<Ticks> parsePreciseUtc(std::string_view text);

}  // namespace emulator
