// An entry of "files", as it was read: what it does not say is absent.
#pragma once

#include <optional>
#include <string>

#include "emulator/snapshot/json_node.h"
#include "emulator/store/object_store.h"
#include "emulator/system/file_time.h"

namespace emulator {

struct FileEntry {
  std::optional<Oid> oid;
  std::optional<std::u16string> path;
  std::optional<bool> isFolder;
  std::optional<bool> isReadOnly;
  std::optional<Ticks> written;
  std::optional<Bytes> contents;  ///< from "data", or the file of a "note"
};

/// `now` is what a time that is reset becomes. Throws SnapshotError.
FileEntry readFileEntry(const JsonNode& node, Ticks now);

}  // namespace emulator
