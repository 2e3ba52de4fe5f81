// Bytes as snapshots write them: base64 with padding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulator/store/sqlite.h"

namespace emulator {

std::string toBase64(ByteView bytes);

/// Nothing for a text that is not exactly what `toBase64` gives for some bytes.
std::optional<Bytes> fromBase64(std::string_view text);

}  // namespace emulator
