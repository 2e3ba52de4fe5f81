#include "desktop/pulled_files.h"

#include <nlohmann/json.hpp>
#include <set>

#include "desktop/input_error.h"
#include "desktop/item_files.h"
#include "desktop/local_file.h"
#include "desktop/text.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// File systems take 255 bytes; some of them encode names in a longer form.
constexpr std::size_t kLongestName = 200;
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

class FilesByTitle final : public PulledFiles {
 public:
  FilesByTitle(const ItemKind& kind, std::u16string_view identity, fs::path folder)
      : kind_(kind), device_(toUtf8(identity)), folder_(std::move(folder)) {
    readIndex();
  }

  fs::path fileOf(const Item& item, std::uint32_t oid) override {
    std::string name = nameFor(kind_.title(item));
    if (name.empty() || given_.contains(name)) name = std::to_string(oid);
    given_.insert(name);
    return folder_ / (name + kind_.format.extension);
  }
  bool isOwn(const fs::path& file, std::string_view, std::string_view) const override {
    const auto own = index_.find(device_);
    if (own == index_.end()) return false;
    const std::string name = file.filename().string();
    return std::any_of(own->begin(), own->end(), [&](const json& listed) { return listed == name; });
  }
  void keep(const fs::path& file) override {
    const std::string name = file.filename().string();
    for (json& names : index_) names.erase(std::remove(names.begin(), names.end(), json(name)), names.end());
    index_[device_].push_back(name);
  }
  void finish() override {
    if (!index_.empty()) writeTextFile(folder_ / kIndexName, index_.dump(2) + "\n");
  }

 private:
  void readIndex() {
    const fs::path file = folder_ / kIndexName;
    if (!fs::exists(file)) return;
    index_ = json::parse(readTextFile(file), nullptr, false);
    const bool isIndex =
        index_.is_object() &&
        std::all_of(index_.begin(), index_.end(), [](const json& names) { return names.is_array(); });
    if (!isIndex) throw InputError(file.string() + ": not a list of the files that were written here");
  }

  const ItemKind& kind_;
  std::string device_;
  fs::path folder_;
  std::set<std::string> given_;  ///< names without their extension
  json index_ = json::object();  ///< device -> names of files
};

}  // namespace

std::unique_ptr<PulledFiles> makePulledFiles(const ItemKind& kind, std::u16string_view deviceIdentity,
                                             const fs::path& folder) {
  if (kind.identity == ItemIdentity::ByTitle) {
    return std::make_unique<FilesByTitle>(kind, deviceIdentity, folder);
  }
  return std::make_unique<FilesByUid>(kind, folder);
}

}  // namespace desktop
