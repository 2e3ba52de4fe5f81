#include "emulator/system/temp_files.h"

#include <algorithm>

#include "platform/errors.h"

namespace emulator {
namespace {

constexpr std::u16string_view kDefaultPath = u"\\temp\\";
constexpr std::size_t kPrefixCharacters = 3;
constexpr UINT kNumbers = 0x10000;  ///< A number has at most four digits in the name.

/// Without the backslash at its end, unless it is the root.
std::u16string_view withoutEnd(std::u16string_view folder) {
  return folder.size() > 1 && folder.ends_with(u'\\') ? folder.substr(0, folder.size() - 1) : folder;
}

std::u16string withEnd(std::u16string_view folder) {
  std::u16string path(folder);
  return path.ends_with(u'\\') ? path : path + u'\\';
}

std::u16string hexadecimal(UINT number) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  std::u16string text;
  do {
    text.insert(text.begin(), kDigits[number % 16]);
    number /= 16;
  } while (number != 0);
  return text;
}

std::u16string numbered(std::u16string_view stem, UINT number) {
  return std::u16string(stem) + hexadecimal(number % kNumbers) + u".TMP";
}

void copyWithNul(std::u16string_view text, WCHAR* target) {
  *std::ranges::copy(text, target).out = u'\0';
}

}  // namespace

DWORD TempFiles::tempPath(DWORD capacity, WCHAR* path) {
  const std::u16string configured = withEnd(configuredPath());
  const FilePlace place = tree_.locate(withoutEnd(configured));
  if (!place.node || !place.node->isFolder()) {
    lastError_.set(ERROR_PATH_NOT_FOUND);
    return 0;
  }
  const auto length = static_cast<DWORD>(configured.size());
  if (capacity <= length) return length + 1;
  copyWithNul(configured, path);
  return length;
}

UINT TempFiles::tempFileName(std::u16string_view folder, std::u16string_view prefix, UINT unique,
                             WCHAR* name) {
  const FilePlace place = tree_.locate(withoutEnd(folder));
  DWORD error = place.error;
  if (error == ERROR_SUCCESS && (!place.node || !place.node->isFolder())) error = ERROR_PATH_NOT_FOUND;
  const std::u16string stem = withEnd(folder) + std::u16string(prefix.substr(0, kPrefixCharacters));
  std::u16string path = numbered(stem, kNumbers - 1);
  // The longest name must be a possible one.
  if (error == ERROR_SUCCESS) error = tree_.locate(path).error;
  if (error != ERROR_SUCCESS) {
    lastError_.set(error);
    return 0;
  }
  if (unique == 0) {
    unique = makeNumbered(stem, path);
  } else {
    path = numbered(stem, unique);
  }
  if (unique != 0) copyWithNul(path, name);
  return unique;
}

std::u16string TempFiles::configuredPath() {
  const auto value = registry_.get(u"HKEY_LOCAL_MACHINE\\SYSTEM\\FileSys", u"TempPath");
  return value ? textOf(*value).value_or(std::u16string(kDefaultPath)) : std::u16string(kDefaultPath);
}

UINT TempFiles::makeNumbered(std::u16string_view stem, std::u16string& path) {
  const auto start = static_cast<UINT>(clock_.now() / kTicksPerMillisecond);
  for (UINT step = 0; step < kNumbers; ++step) {
    const UINT number = (start + step) % kNumbers;
    if (number == 0) continue;  // 0 is the failure.
    path = numbered(stem, number);
    const FilePlace place = tree_.locate(path);
    if (place.node) continue;
    tree_.make(place.folder, place.name, FILE_ATTRIBUTE_NORMAL);
    return number;
  }
  lastError_.set(ERROR_FILE_EXISTS);
  return 0;
}

}  // namespace emulator
