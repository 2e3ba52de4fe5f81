#include "emulator/recorder/installation_names.h"

#include <algorithm>

namespace emulator {
namespace {

constexpr std::u16string_view kRegistryKey = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern";
constexpr std::size_t kNumberLength = 3;

std::u16string_view folderOf(std::u16string_view path) {
  return path.substr(0, std::min(path.rfind(u'\\'), path.size()));
}

std::u16string_view lastPart(std::u16string_view path) {
  return path.substr(path.rfind(u'\\') + 1);
}

/// As the C library reads a number: after blanks and a sign, up to the first character that is no digit.
bool beginsWithNumber(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
  if (text.starts_with(u'-') || text.starts_with(u'+')) text.remove_prefix(1);
  const std::u16string_view digits = text.substr(0, text.find_first_not_of(u"0123456789"));
  return digits.find_first_not_of(u'0') != std::u16string_view::npos;
}

}  // namespace

InstallationNames installationNames(std::u16string_view modulePath) {
  const std::u16string_view folder = lastPart(folderOf(modulePath));
  InstallationNames names{{}, std::u16string(kRegistryKey)};
  if (folder.size() != kNumberLength || !beginsWithNumber(folder)) return names;
  names.databaseSuffix.append(u"_").append(folder);
  names.registryKey.append(u"\\").append(folder);
  return names;
}

}  // namespace emulator
