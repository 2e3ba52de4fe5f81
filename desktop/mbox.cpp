#include "desktop/mbox.h"

#include <algorithm>

namespace desktop {

namespace {

constexpr std::string_view kFrom = "From ";

std::string_view takeLine(std::string_view& rest) {
  const std::string_view line = rest.substr(0, std::min(rest.find('\n'), rest.size() - 1) + 1);
  rest.remove_prefix(line.size());
  return line;
}

bool isDigit(char letter) {
  return letter >= '0' && letter <= '9';
}

/// Such a line ends with when the mail came in; a text may well begin a line with "From ".
bool isFromLine(std::string_view line) {
  if (!line.starts_with(kFrom)) return false;
  for (std::size_t colon = line.find(':'); colon != std::string_view::npos;
       colon = line.find(':', colon + 1)) {
    if (isDigit(line[colon - 1]) && colon + 1 < line.size() && isDigit(line[colon + 1])) return true;
  }
  return false;
}

bool isBlank(std::string_view line) {
  return line == "\n" || line == "\r\n";
}

std::string_view withoutProtection(std::string_view line) {
  const std::size_t marks = std::min(line.find_first_not_of('>'), line.size());
  return marks > 0 && line.substr(marks).starts_with(kFrom) ? line.substr(1) : line;
}

}  // namespace

std::vector<MboxEntry> entriesOfMbox(std::string_view text) {
  std::vector<MboxEntry> entries;
  bool isAfterBlank = true;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = takeLine(text);
    if (isAfterBlank && isFromLine(line)) {
      entries.push_back({number, {}});
    } else if (!entries.empty()) {
      entries.back().text += withoutProtection(line);
    }
    isAfterBlank = isBlank(line);
  }
  // The blank line in front of the next "From " line is the box's, not the mail's.
  for (MboxEntry& entry : entries) {
    if (entry.text.ends_with("\n\n")) entry.text.pop_back();
  }
  return entries;
}

}  // namespace desktop
