// The device's files and folders as they are stored: names, attributes, times, contents. Knows no handles.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "emulator/store/chunked_bytes.h"
#include "emulator/store/object_store.h"
#include "emulator/system/clock.h"
#include "platform/files.h"

namespace emulator {

/// The root's identifier. It is no object.
inline constexpr Oid kRootFolder = 0;

/// The object store tells a file's length in 32 bits.
inline constexpr std::int64_t kMaxFileBytes = 0xFFFFFFFF;

struct FileNode {
  Oid oid = kRootFolder;
  Oid parent = kRootFolder;
  std::u16string name;
  DWORD attributes = FILE_ATTRIBUTE_DIRECTORY;
  std::int64_t size = 0;
  Ticks written = 0;  ///< UTC; the store keeps no other time

  bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  bool isReadOnly() const { return (attributes & FILE_ATTRIBUTE_READONLY) != 0; }
};

/// Where a path leads: to something, or to a place in a folder where something of that name can be made.
struct FilePlace {
  DWORD error = 0;  ///< why it leads nowhere: as splitPath, or ERROR_PATH_NOT_FOUND for a missing folder
  Oid folder = kRootFolder;
  std::u16string name;
  std::optional<FileNode> node;
};

class FileTree {
 public:
  FileTree(ObjectStore& store, const Clock& clock)
      : store_(store), clock_(clock), contents_(store.connection(), "file_chunk", "file") {}

  FilePlace locate(std::u16string_view path);
  std::optional<FileNode> node(Oid oid);
  /// Names are sought without regard to case.
  std::optional<FileNode> child(Oid folder, std::u16string_view name);
  /// The child of a folder with the least identifier above `after`: walks a folder, also while it changes.
  std::optional<FileNode> nextChild(Oid folder, Oid after);
  /// The full path; empty for an identifier that is no file or folder.
  std::u16string pathOf(Oid oid);

  /// Makes an empty file or, with FILE_ATTRIBUTE_DIRECTORY, a folder, under a new identifier or the given one
  /// (StoreError when that is taken). Other attributes than a file can keep are dropped; a file is to be
  /// archived.
  FileNode make(Oid folder, std::u16string_view name, DWORD attributes,
                std::optional<Oid> oid = std::nullopt);
  /// Makes the folders of a path that are missing. ERROR_SUCCESS, or why the path cannot be made.
  DWORD makeFolders(std::u16string_view path);
  /// Puts a file or folder, with what is in it, into another folder or under another name. The place must be
  /// free, and not within the folder itself.
  void move(Oid oid, Oid folder, std::u16string_view name);
  /// A folder goes with everything in it.
  void remove(Oid oid);

  /// Reads up to the buffer's length; the bytes read, 0 at or past the end.
  std::size_t read(Oid file, std::int64_t offset, std::span<BYTE> buffer);
  /// Writes in place, beyond the end too (the gap reads as zeros), and sets the time to now. The caller keeps
  /// within kMaxFileBytes.
  void write(Oid file, std::int64_t offset, ByteView data);
  void truncate(Oid file);
  void setAttributes(Oid oid, DWORD attributes);
  void setWritten(Oid oid, Ticks written);

 private:
  ObjectStore& store_;
  const Clock& clock_;
  ChunkedBytes contents_;
};

}  // namespace emulator
