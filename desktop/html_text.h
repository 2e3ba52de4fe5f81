// The text of an HTML page, for a device that shows plain texts.
#pragma once

#include <string>

namespace desktop {

/// Both are UTF-8; lines end in LF. Blanks are joined, in preformatted texts too; paragraphs, list items and rows of tables
/// begin lines of their own.
std::string textOfHtml(const std::string& html);

}  // namespace desktop
