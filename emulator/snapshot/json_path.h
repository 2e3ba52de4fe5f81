// How the place of a value in a snapshot is written: `mail["Sent Items"][0].Subject`.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace emulator {

/// A key that is a plain name stands after a dot, any other in brackets, as JSON writes it: one line always.
void appendKey(std::string& path, std::string_view key);
void appendIndex(std::string& path, std::size_t index);

}  // namespace emulator
