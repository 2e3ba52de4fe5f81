#include "desktop/vcard_cards.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/input_error.h"
#include "desktop/item_refused.h"
#include "desktop/text.h"
#include "desktop/vcard_line.h"

namespace desktop {

namespace {

struct Line {
  int number;
  std::string text;
};

bool isBlank(char letter) {
  return letter == ' ' || letter == '\t';
}

/// The lines of one card as they come in, unfolded.
class OpenCard {
 public:
  explicit OpenCard(int line) : line_(line) {}

  void take(int number, std::string_view line) {
    if (continuesEncoded(line)) {
      append(line);
    } else if (!lines_.empty() && !line.empty() && isBlank(line.front())) {
      append(line.substr(1));
    } else if (!line.empty()) {
      start(number, line);
    }
  }

  /// Whether a card that begins now is a value of this one.
  bool expectsCard() const { return !lines_.empty() && lineName(lines_.back().text) == "AGENT"; }

  VcardText close() const {
    VcardText card{line_, "BEGIN:VCARD\r\n", {}};
    const bool hasLists = !isOldest();
    try {
      for (const Line& line : lines_)
        card.text += (hasLists ? withoutLists(checked(line)) : checked(line)) + "\r\n";
    } catch (const ItemRefused& refusal) {
      card.fault = refusal.what();
    }
    card.text += "END:VCARD\r\n";
    return card;
  }

  VcardText giveUp(std::string why) const {
    VcardText card = close();
    card.fault = std::move(why);
    return card;
  }

 private:
  void start(int number, std::string_view line) {
    lines_.push_back({number, std::string(line)});
    isQuotedPrintable_ = isQuotedPrintable(line);
    isBase64_ = isBase64(line);
  }

  /// The value of the last line goes on in this one without a blank before it.
  bool continuesEncoded(std::string_view line) const {
    if (lines_.empty()) return false;
    if (isQuotedPrintable_ && lines_.back().text.ends_with('=')) return true;
    return isBase64_ && !line.empty() && !isBlank(line.front()) && line.find(':') == std::string_view::npos;
  }

  bool isOldest() const {
    return std::any_of(lines_.begin(), lines_.end(), [](const Line& line) {
      return lineName(line.text) == "VERSION" && line.text.find("2.1") != std::string::npos;
    });
  }

  void append(std::string_view line) {
    std::string& last = lines_.back().text;
    if (isQuotedPrintable_ && last.ends_with('=')) last.pop_back();
    last += line;
  }

  static std::string checked(const Line& line) {
    std::string text = lineInUtf8(line.text);
    const std::string fault = faultOfLine(text);
    if (!fault.empty()) throw ItemRefused("line " + std::to_string(line.number) + " " + fault);
    // What should have gone on didn't; a parser would go on with the next property.
    if (isQuotedPrintable(text)) text.erase(text.find_last_not_of('=') + 1);
    return text;
  }

  int line_;
  std::vector<Line> lines_;
  bool isQuotedPrintable_ = false;  ///< of the last line
  bool isBase64_ = false;
};

class Splitter {
 public:
  void take(std::string_view line) {
    ++line_;
    if (marksCard(line, "BEGIN")) {
      begin();
    } else if (marksCard(line, "END")) {
      end();
    } else if (open_ && inner_ == 0) {
      open_->take(line_, line);
    }
  }

  std::vector<VcardText> finish() {
    closeUnfinished();
    return std::move(cards_);
  }

 private:
  void begin() {
    if (open_ && (inner_ > 0 || open_->expectsCard())) {
      ++inner_;
      return;
    }
    closeUnfinished();
    open_.emplace(line_);
  }

  void end() {
    if (!open_) return;
    if (inner_ > 0) {
      --inner_;
      return;
    }
    cards_.push_back(open_->close());
    open_.reset();
  }

  void closeUnfinished() {
    if (!open_) return;
    cards_.push_back(open_->giveUp("the card isn't closed: END:VCARD is missing"));
    open_.reset();
    inner_ = 0;
  }

  int line_ = 0;
  std::optional<OpenCard> open_;
  int inner_ = 0;  ///< how many cards within it are open
  std::vector<VcardText> cards_;
};

}  // namespace

std::vector<VcardText> splitVcards(std::string_view text, const std::string& fileName) {
  text = withoutByteOrderMark(text);
  Splitter splitter;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    splitter.take(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  std::vector<VcardText> cards = splitter.finish();
  if (cards.empty()) throw InputError(fileName + ": not a vCard file");
  return cards;
}

}  // namespace desktop
