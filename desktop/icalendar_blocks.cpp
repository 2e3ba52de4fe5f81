#include "desktop/icalendar_blocks.h"

#include <algorithm>
#include <array>
#include <utility>

#include "desktop/input_error.h"
#include "desktop/text.h"

namespace desktop {
namespace {

/// Components that only stand directly in a calendar: where one begins within another, an END is missing.
constexpr std::array<std::string_view, 5> kItemKinds = {"VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY",
                                                        "VTIMEZONE"};

std::string upperCase(std::string_view text) {
  std::string result(text);
  for (char& character : result) {
    if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  }
  return result;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  const std::size_t last = text.find_last_not_of(" \t\r");
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// "Begin:VEvent" gives "BEGIN"; parameters are no part of it.
std::string nameOf(std::string_view line) {
  return upperCase(line.substr(0, line.find_first_of(":;")));
}

/// "Begin:VEvent" gives "VEVENT"; empty without a colon.
std::string valueOf(std::string_view line) {
  const std::size_t colon = line.find(':');
  return colon == std::string_view::npos ? "" : upperCase(withoutTrailingBlanks(line.substr(colon + 1)));
}

class Splitter {
 public:
  explicit Splitter(std::string fileName) : fileName_(std::move(fileName)) {}

  void take(std::string_view line) {
    ++line_;
    const std::string name = nameOf(line);
    if (name == "BEGIN") {
      begin(valueOf(line));
    } else if (name == "END") {
      end(valueOf(line));
    } else if (!open_.empty()) {
      if (!line.empty()) append(line);
    } else if (inCalendar_ && name == "VERSION" && valueOf(line) == "1.0") {
      throw InputError(fileName_ + ":" + std::to_string(line_) +
                       ": vCalendar 1.0 is not read, only iCalendar 2.0");
    }
  }

  std::vector<CalendarBlock> finish() {
    closeUnfinished();
    if (!sawCalendar_) throw InputError(fileName_ + ": not an iCalendar file");
    return std::move(blocks_);
  }

 private:
  void begin(const std::string& name) {
    if (name == "VCALENDAR") {
      closeUnfinished();
      inCalendar_ = sawCalendar_ = true;
      return;
    }
    if (!inCalendar_ || name.empty()) return;
    if (std::find(kItemKinds.begin(), kItemKinds.end(), name) != kItemKinds.end()) closeUnfinished();
    if (open_.empty()) blocks_.push_back({name, line_, {}, true});
    append("BEGIN:" + name);
    open_.push_back(name);
  }

  void end(const std::string& name) {
    if (name == "VCALENDAR") {
      closeUnfinished();
      inCalendar_ = false;
      return;
    }
    if (open_.empty()) return;
    if (name == open_.front()) {
      closeNested();
      append("END:" + name);
      open_.clear();
    } else if (name == open_.back()) {
      append("END:" + name);
      open_.pop_back();
    } else {
      blocks_.back().complete = false;
    }
  }

  /// A component within the item that is still open when the item ends.
  void closeNested() {
    while (open_.size() > 1) {
      append("END:" + open_.back());
      open_.pop_back();
      blocks_.back().complete = false;
    }
  }

  void closeUnfinished() {
    if (open_.empty()) return;
    closeNested();
    append("END:" + open_.front());
    open_.clear();
    blocks_.back().complete = false;
  }

  void append(std::string_view line) { blocks_.back().text.append(line).append("\n"); }

  std::string fileName_;
  int line_ = 0;
  bool sawCalendar_ = false;
  bool inCalendar_ = false;
  std::vector<std::string> open_;  ///< the components around the current line, the block's own first
  std::vector<CalendarBlock> blocks_;
};

}  // namespace

std::vector<CalendarBlock> splitCalendar(std::string_view text, const std::string& fileName) {
  // A NUL would end the text early for the parser. No calendar program writes one, but UTF-16 is full of
  // them.
  if (text.find('\0') != std::string_view::npos) throw InputError(fileName + ": not an iCalendar file");
  text = withoutByteOrderMark(text);
  Splitter splitter(fileName);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    splitter.take(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return splitter.finish();
}

}  // namespace desktop
