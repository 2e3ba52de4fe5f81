#include "desktop/file_format.h"

#include <algorithm>
#include <array>

#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::array kFormats{&kCalendarFormat, &kVcardFormat,   &kMailFormat,
                              &kMboxFormat,     &kMaildirFormat, &kNoteFormat};

char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char letter) { return lowerCase(letter); });
  return text;
}

bool beginsWith(std::string_view text, std::string_view beginning) {
  text = withoutByteOrderMark(text);
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  return lowerCase(std::string(text.substr(0, beginning.size()))) == lowerCase(std::string(beginning));
}

const FileFormat* formatByPlace(const std::filesystem::path& path) {
  const auto* const found = std::ranges::find_if(kFormats, [&](const FileFormat* format) {
    return format->isPlaced != nullptr && format->isPlaced(path);
  });
  return found == kFormats.end() ? nullptr : *found;
}

}  // namespace

std::span<const FileFormat* const> fileFormats() {
  return kFormats;
}

const FileFormat* formatByName(const std::filesystem::path& path) {
  if (const FileFormat* placed = formatByPlace(path)) return placed;
  const std::string extension = lowerCase(path.extension().string());
  for (const FileFormat* format : kFormats) {
    if (format->extension != nullptr && extension == format->extension) return format;
  }
  return nullptr;
}

const FileFormat& formatOf(const std::filesystem::path& path, std::string_view text) {
  const FileFormat* named = formatByName(path);
  if (named != nullptr && (named->beginning != nullptr || named->isPlaced != nullptr)) return *named;
  for (const FileFormat* format : kFormats) {
    if (format->beginning != nullptr && beginsWith(text, format->beginning)) return *format;
  }
  return named != nullptr ? *named : *kFormats.front();
}

}  // namespace desktop
