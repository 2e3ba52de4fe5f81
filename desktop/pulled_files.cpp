#include "desktop/pulled_files.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "desktop/input_error.h"
#include "desktop/item_files.h"
#include "desktop/item_kind.h"
#include "desktop/local_file.h"
#include "desktop/text.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// File systems take 255 bytes, and the extension needs some.
constexpr std::size_t kLongestName = 250;
constexpr const char* kIndexName = ".qorv-sync.json";

class FilesByUid final : public PulledFiles {
 public:
  FilesByUid(const ItemKind& kind, fs::path folder) : kind_(kind), folder_(std::move(folder)) {}

  fs::path fileOf(const Item&, std::uint32_t oid) override {
    return folder_ / (std::to_string(oid) + kind_.format.extension);
  }
  bool isOwn(const fs::path&, std::string_view text, std::string_view uid) const override {
    return namesOnly(text, uid);
  }

 private:
  const ItemKind& kind_;
  fs::path folder_;
};

/// The title as a file's name; empty when it can't be one.
std::string nameFor(const std::u16string& title) {
  std::string name = toUtf8(title);
  for (char& letter : name) {
    if (letter == '/' || static_cast<unsigned char>(letter) < ' ') letter = '_';
  }
  return name.size() <= kLongestName ? name : std::string();
}

fs::path indexIn(const fs::path& folder) {
  return folder / kIndexName;
}

/// Device -> what was written for it: names of files, or {"file", "title"} where the name isn't the title.
json readIndex(const fs::path& folder) {
  const fs::path file = indexIn(folder);
  if (!fs::exists(file)) return json::object();
  json index = json::parse(readTextFile(file), nullptr, false);
  const bool isIndex =
      index.is_object() && std::ranges::all_of(index, [](const json& e) { return e.is_array(); });
  if (!isIndex) throw InputError(file.string() + ": not a list of the files that were written here");
  return index;
}

bool isAbout(const json& entry, const std::string& name) {
  return entry == name || (entry.is_object() && entry.value("file", json()) == name);
}

class FilesByTitle final : public PulledFiles {
 public:
  FilesByTitle(const ItemKind& kind, std::u16string_view identity, fs::path folder)
      : kind_(kind), device_(toUtf8(identity)), folder_(std::move(folder)), index_(readIndex(folder_)) {}

  fs::path fileOf(const Item& item, std::uint32_t oid) override {
    const std::string title = toUtf8(kind_.title(item));
    std::string name = nameFor(kind_.title(item));
    if (name.empty() || given_.contains(name)) name = std::to_string(oid);
    given_.insert(name);
    const std::string file = name + kind_.format.extension;
    if (name != title) titles_[file] = title;
    return folder_ / file;
  }
  bool isOwn(const fs::path& file, std::string_view, std::string_view) const override {
    const auto own = index_.find(device_);
    if (own == index_.end()) return false;
    const std::string name = file.filename().string();
    return std::ranges::any_of(*own, [&](const json& entry) { return isAbout(entry, name); });
  }
  void keep(const fs::path& file) override {
    const std::string name = file.filename().string();
    for (json& entries : index_) {
      entries.erase(
          std::remove_if(entries.begin(), entries.end(), [&](const json& e) { return isAbout(e, name); }),
          entries.end());
    }
    const auto title = titles_.find(name);
    index_[device_].push_back(title == titles_.end() ? json(name)
                                                     : json{{"file", name}, {"title", title->second}});
  }
  void finish() override {
    if (!index_.empty()) writeTextFile(indexIn(folder_), index_.dump(2) + "\n");
  }

 private:
  const ItemKind& kind_;
  std::string device_;
  fs::path folder_;
  std::set<std::string> given_;                ///< names without their extension
  std::map<std::string, std::string> titles_;  ///< by names of files that don't say them
  json index_;
};

}  // namespace

std::unique_ptr<PulledFiles> openFilesByUid(const ItemKind& kind, std::u16string_view,
                                            const fs::path& folder) {
  return std::make_unique<FilesByUid>(kind, folder);
}

std::optional<std::u16string> titleOfPulledFile(const fs::path& file) {
  const json index = readIndex(file.parent_path());
  for (const json& entries : index) {
    for (const json& entry : entries) {
      const bool hasTitle = entry.is_object() && isAbout(entry, file.filename().string());
      if (hasTitle && entry.value("title", json()).is_string())
        return toUtf16(entry["title"].get<std::string>());
    }
  }
  return std::nullopt;
}

std::unique_ptr<PulledFiles> openFilesByTitle(const ItemKind& kind, std::u16string_view deviceIdentity,
                                              const fs::path& folder) {
  return std::make_unique<FilesByTitle>(kind, deviceIdentity, folder);
}

}  // namespace desktop
