// Names without regard to case, as files, registry keys, libraries and window classes are compared.
#pragma once

#include <string>
#include <string_view>

namespace emulator {

/// One character to one character, for all scripts, whatever the host's locale. Surrogates stay as they are.
char16_t foldCase(char16_t character);

/// The text in the form under which names are kept and sought.
std::u16string foldCase(std::u16string_view text);

bool equalFolded(std::u16string_view left, std::u16string_view right);

}  // namespace emulator
