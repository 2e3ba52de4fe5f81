// The files of one kind's folder: which one an item has, and whether one that is there is the item's own.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "desktop/item_kind.h"

namespace desktop {

class PulledFiles {
 public:
  PulledFiles() = default;
  PulledFiles(const PulledFiles&) = delete;
  PulledFiles& operator=(const PulledFiles&) = delete;
  virtual ~PulledFiles() = default;

  /// A file of its own for each item.
  virtual std::filesystem::path fileOf(const Item& item, std::uint32_t oid) = 0;
  /// Whether a file that is there was written for the item of that UID, so that it may be replaced.
  virtual bool isOwn(const std::filesystem::path& file, std::string_view text,
                     std::string_view uid) const = 0;
  /// The file holds the item now.
  virtual void keep(const std::filesystem::path&) {}
  /// Once all are written. Throws InputError when what is to be remembered can't be written.
  virtual void finish() {}
};

/// As the kind's items are known: by their UIDs, in files named after their OIDs; or by their titles, which
/// name the files, and then the folder's hidden file `.qorv-sync.json` has, for each device, the names of
/// those that were written for it. Throws InputError when that file is nothing of the sort.
std::unique_ptr<PulledFiles> makePulledFiles(const ItemKind& kind, std::u16string_view deviceIdentity,
                                             const std::filesystem::path& folder);

}  // namespace desktop
