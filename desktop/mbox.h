// Mailboxes: many mails in one file, each behind a line that begins with "From ".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace desktop {

struct MboxEntry {
  std::size_t line;  ///< of its "From " line, from 1
  std::string text;  ///< without that line, and without the ">" that protects such lines within a mail
};

/// What lies in front of the first such line is no mail of the box.
std::vector<MboxEntry> entriesOfMbox(std::string_view text);

}  // namespace desktop
