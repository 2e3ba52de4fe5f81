// Reads the device's items of one kind, as items, with the files that accompany them.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "desktop/item_kind.h"
#include "desktop/session.h"

namespace desktop {

/// The device holds the files of all items of a request at once: so many of them are asked for at a time.
constexpr std::size_t kBatchWithFiles = 16;

/// What becomes of files that accompany the items. The device is rid of them in either case.
enum class FilesWanted : std::uint8_t { Yes, No };

/// What becomes of the items that are read, in the order in which they were asked for.
struct KindSink {
  /// `notes` tell what is missing.
  std::function<void(Item item, std::uint32_t oid, const std::vector<std::string>& notes)> item;
  std::function<void(std::uint32_t oid, const std::string& why)> failure;
  /// The device keeps what it was to be rid of.
  std::function<void(const std::string& what)> leftover;
  /// What came of a record that is too large, in front of that failure. Need not be there.
  std::function<void(WireReader record)> part = {};
};

/// An item fails when it, or a wanted file that accompanies it, can't be had. Throws ProtocolError when the device
/// sends anything but records of the kind.
void readItems(Session& session, const ItemKind& kind, std::span<const std::uint32_t> oids, FilesWanted files,
               const KindSink& sink);

}  // namespace desktop
