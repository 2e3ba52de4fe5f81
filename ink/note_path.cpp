#include "ink/note_path.h"

#include <algorithm>

namespace qorv {

namespace {

constexpr std::u16string_view kFolder = u"\\My Documents\\";
constexpr std::u16string_view kExtension = u".pwi";
constexpr std::u16string_view kNameOfUnnamed = u"Note";
constexpr std::u16string_view kReplaced = u"\\/\"<>.:|?*\r\n\t";

std::u16string decimal(DWORD number) {
  std::u16string digits;
  do {
    digits.insert(digits.begin(), static_cast<WCHAR>(u'0' + number % 10));
    number /= 10;
  } while (number != 0);
  return digits;
}

}  // namespace

std::u16string noteNameOf(std::u16string_view path) {
  const std::u16string_view file = path.substr(path.rfind(u'\\') + 1);
  return std::u16string(file.substr(0, file.rfind(u'.')));
}

std::u16string fileNameFor(std::u16string_view noteName) {
  std::u16string name(noteName);
  const auto isReplaced = [](WCHAR character) {
    return kReplaced.find(character) != std::u16string_view::npos;
  };
  std::ranges::replace_if(name, isReplaced, u'_');
  return name;
}

std::u16string notePath(std::u16string_view fileName) {
  return std::u16string(kFolder).append(fileName).append(kExtension);
}

std::u16string unnamedNotePath(DWORD number) {
  return notePath(std::u16string(kNameOfUnnamed) + decimal(number));
}

std::u16string numberedNotePath(std::u16string_view fileName, DWORD number) {
  const std::u16string_view name = fileName.empty() ? kNameOfUnnamed : fileName;
  return notePath(std::u16string(name) + u'_' + decimal(number));
}

bool canBeFile(std::u16string_view path) {
  return path.size() < MAX_PATH &&
         std::ranges::all_of(path, [](WCHAR character) { return character >= u' '; });
}

}  // namespace qorv
