#include "emulator/system/case_fold.h"

#include <algorithm>
#include <clocale>
#include <cwctype>
#include <stdexcept>

namespace emulator {
namespace {

/// Unicode's tables, which the C library carries whatever locales are installed.
locale_t unicodeLocale() {
  static const locale_t kLocale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (kLocale == nullptr) throw std::runtime_error("the C library has no locale C.UTF-8");
  return kLocale;
}

}  // namespace

char16_t foldCase(char16_t character) {
  if (character < 0x80) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A')
                                                  : character;
  }
  return static_cast<char16_t>(towupper_l(character, unicodeLocale()));
}

std::u16string foldCase(std::u16string_view text) {
  std::u16string folded(text);
  std::ranges::transform(folded, folded.begin(), [](char16_t character) { return foldCase(character); });
  return folded;
}

bool equalFolded(std::u16string_view left, std::u16string_view right) {
  return std::ranges::equal(
      left, right, {}, [](char16_t character) { return foldCase(character); },
      [](char16_t character) { return foldCase(character); });
}

}  // namespace emulator
