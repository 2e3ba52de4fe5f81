#include "emulator/snapshot/json.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "emulator/snapshot/json_path.h"
#include "emulator/snapshot/snapshot_error.h"

namespace emulator {
namespace {

/// Watches the parser: of two equal keys it would keep the later and say nothing.
class DuplicateKeys {
 public:
  void see(Json::parse_event_t event, const Json& parsed) {
    switch (event) {
      case Json::parse_event_t::object_start:
      case Json::parse_event_t::array_start:
        open_.push_back({event == Json::parse_event_t::object_start, {}, {}, 0});
        break;
      case Json::parse_event_t::key:
        take(parsed.get_ref<const std::string&>());
        break;
      case Json::parse_event_t::object_end:
      case Json::parse_event_t::array_end:
        open_.pop_back();
        [[fallthrough]];
      case Json::parse_event_t::value:
        if (!open_.empty()) ++open_.back().index;
        break;
    }
  }

 private:
  struct Open {
    bool isObject;
    std::unordered_set<std::string> keys;
    std::string key;    ///< of the member that is being read
    std::size_t index;  ///< of the element that is being read
  };

  void take(const std::string& key) {
    open_.back().key = key;
    if (!open_.back().keys.insert(key).second) throw SnapshotError(path(), "given twice");
  }

  std::string path() const {
    std::string path;
    for (const Open& open : open_) {
      if (open.isObject) {
        appendKey(path, open.key);
      } else {
        appendIndex(path, open.index);
      }
    }
    return path;
  }

  std::vector<Open> open_;
};

/// The library's words without its name and number.
std::string reasonOf(const Json::exception& error) {
  std::string reason = error.what();
  for (const std::string_view prefix : {"] ", "parse error at "}) {
    const std::size_t found = reason.find(prefix);
    if (found != std::string::npos) reason.erase(0, found + prefix.size());
  }
  return reason;
}

}  // namespace

Json parseJson(std::string_view text) {
  DuplicateKeys duplicates;
  const auto watch = [&duplicates](int, Json::parse_event_t event, const Json& parsed) {
    duplicates.see(event, parsed);
    return true;
  };
  try {
    return Json::parse(text, watch);
  } catch (const Json::exception& error) {
    throw SnapshotError("", "invalid JSON: " + reasonOf(error));
  }
}

}  // namespace emulator
