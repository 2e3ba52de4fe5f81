#include "emulator/snapshot/json.h"

#include <string>
#include <utility>
#include <vector>

#include "emulator/snapshot/json_path.h"
#include "emulator/snapshot/snapshot_error.h"

namespace emulator {
namespace {

/// The library's words without its name and number.
std::string reasonOf(const Json::exception& error) {
  std::string reason = error.what();
  for (const std::string_view prefix : {"] ", "parse error at "}) {
    const std::size_t found = reason.find(prefix);
    if (found != std::string::npos) reason.erase(0, found + prefix.size());
  }
  return reason;
}

/// Builds the value as it is read. The library's own builder keeps the later of two equal keys and says
/// nothing.
class Builder : public nlohmann::json_sax<Json> {
 public:
  Json take() { return std::move(root_); }

  bool null() override { return put(nullptr); }
  bool boolean(bool value) override { return put(value); }
  bool number_integer(number_integer_t value) override { return put(value); }
  bool number_unsigned(number_unsigned_t value) override { return put(value); }
  bool number_float(number_float_t value, const string_t&) override { return put(value); }
  bool string(string_t& value) override { return put(std::move(value)); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return open(Json::object()); }
  bool start_array(std::size_t) override { return open(Json::array()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }

  bool key(string_t& key) override {
    open_.back().key = key;
    if (open_.back().value->contains(key)) throw SnapshotError(path(), "given twice");
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const Json::exception& error) override {
    throw SnapshotError("", "invalid JSON: " + reasonOf(error));
  }

 private:
  /// An object or list that is being read.
  struct Open {
    Json* value;
    std::string key;  ///< the one that was read last
  };

  Json& add(Json&& value) {
    if (open_.empty()) return root_ = std::move(value);
    Json& parent = *open_.back().value;
    if (parent.is_object()) return parent[open_.back().key] = std::move(value);
    parent.push_back(std::move(value));
    return parent.back();
  }

  bool put(Json&& value) {
    add(std::move(value));
    return true;
  }

  bool open(Json&& value) {
    open_.push_back({&add(std::move(value)), {}});
    return true;
  }

  bool close() {
    open_.pop_back();
    return true;
  }

  std::string path() const {
    std::string path;
    for (const Open& open : open_) {
      if (open.value->is_object()) {
        appendKey(path, open.key);
      } else {
        appendIndex(path, open.value->size() - 1);
      }
    }
    return path;
  }

  Json root_;
  std::vector<Open> open_;
};

}  // namespace

Json parseJson(std::string_view text) {
  Builder builder;
  Json::sax_parse(text, &builder);
  return builder.take();
}

}  // namespace emulator
