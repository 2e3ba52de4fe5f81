// The files of one kind's folder: which one an item has, and whether one that is there is the item's own.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/item.h"

namespace desktop {

struct ItemKind;

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
  /// Where the item that is to have the file is kept so far; the file itself when it doesn't move.
  virtual std::filesystem::path current(const std::filesystem::path& file) const { return file; }
  /// The file holds the item now.
  virtual void keep(const std::filesystem::path&) {}
  /// Once all are written. Throws InputError when what is to be remembered can't be written.
  virtual void finish() {}
};

/// Named after their OIDs; the UID in them tells whose they are.
std::unique_ptr<PulledFiles> openFilesByUid(const ItemKind& kind, std::u16string_view deviceIdentity,
                                            const std::filesystem::path& folder);

/// The title of the item that a file was written for, where its name couldn't be that. Throws InputError when the
/// folder's hidden file is nothing of the sort.
std::optional<std::u16string> titleOfPulledFile(const std::filesystem::path& file);

/// Named after the items' titles. The folder's hidden file `.qorv-sync.json` has, for each device, the names of
/// those that were written for it, and their titles where the names aren't these. Throws InputError when that file is nothing of the sort.
std::unique_ptr<PulledFiles> openFilesByTitle(const ItemKind& kind, std::u16string_view deviceIdentity,
                                              const std::filesystem::path& folder);

}  // namespace desktop
