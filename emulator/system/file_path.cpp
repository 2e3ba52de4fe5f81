#include "emulator/system/file_path.h"

#include <algorithm>

#include "emulator/system/case_fold.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace emulator {
namespace {

constexpr std::u16string_view kForbidden = u"<>:\"/|";
constexpr std::u16string_view kWildcards = u"*?";

bool isCharacterOfName(char16_t character) {
  return character >= u' ' && kForbidden.find(character) == std::u16string_view::npos;
}

bool isPattern(std::u16string_view part) {
  return !part.empty() && part != u"." && part != u".." && std::ranges::all_of(part, isCharacterOfName);
}

bool isName(std::u16string_view part) {
  return isPattern(part) && part.find_first_of(kWildcards) == std::u16string_view::npos;
}

DWORD split(std::u16string_view text, bool (*isLast)(std::u16string_view), FilePath& path) {
  if (text.empty()) return ERROR_INVALID_NAME;
  if (text.size() >= MAX_PATH) return ERROR_FILENAME_EXCED_RANGE;
  if (text.front() != u'\\') return ERROR_PATH_NOT_FOUND;
  path = {};
  if (text.size() == 1) return ERROR_SUCCESS;
  text.remove_prefix(1);
  for (std::size_t end = text.find(u'\\'); end != std::u16string_view::npos; end = text.find(u'\\')) {
    path.folders.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  path.name = text;
  return std::ranges::all_of(path.folders, isName) && isLast(path.name) ? ERROR_SUCCESS : ERROR_INVALID_NAME;
}

}  // namespace

DWORD splitPath(std::u16string_view text, FilePath& path) {
  return split(text, isName, path);
}

DWORD splitPattern(std::u16string_view text, FilePath& path) {
  return split(text, isPattern, path);
}

bool matchesWildcards(std::u16string_view name, std::u16string_view pattern) {
  if (pattern == u"*.*") return true;
  std::size_t at = 0;
  std::size_t inPattern = 0;
  // Where to go on when the text that the last * stands for must be one character longer.
  std::size_t afterStar = std::u16string_view::npos;
  std::size_t starEnd = 0;
  while (at < name.size()) {
    if (inPattern < pattern.size() && pattern[inPattern] == u'*') {
      afterStar = ++inPattern;
      starEnd = at;
    } else if (inPattern < pattern.size() &&
               (pattern[inPattern] == u'?' || foldCase(pattern[inPattern]) == foldCase(name[at]))) {
      ++inPattern;
      ++at;
    } else if (afterStar != std::u16string_view::npos) {
      inPattern = afterStar;
      at = ++starEnd;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', inPattern) == std::u16string_view::npos;
}

}  // namespace emulator
