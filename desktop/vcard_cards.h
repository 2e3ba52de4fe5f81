// Cuts the text of an address book into its cards, so that a broken one harms no other and each knows its line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desktop {

/// One card, from its BEGIN line to its END line.
struct VcardText {
  int line = 0;       ///< of BEGIN, counted from 1
  std::string text;   ///< ready for a parser: UTF-8, one property a line, CRLF line ends
  std::string fault;  ///< why there is nothing to parse; empty when there is
};

/// Undoes all folding, and converts what is said to be in another character set. Text between cards is passed
/// over, and so is a card within a card (an AGENT). Throws InputError when there is no card at all.
std::vector<VcardText> splitVcards(std::string_view text, const std::string& fileName);

}  // namespace desktop
