// Which files are open, and what their openers allow others.
#pragma once

#include <map>
#include <memory>

#include "emulator/store/object_store.h"
#include "platform/types.h"

namespace emulator {

/// Counts over the openings of one file.
struct FileUse {
  int readers = 0;
  int writers = 0;
  int withoutReadSharing = 0;
  int withoutWriteSharing = 0;
};

/// One opening's part in the counts, from construction to destruction.
class FileHold {
 public:
  FileHold(std::shared_ptr<FileUse> use, DWORD access, DWORD share);
  FileHold(const FileHold&) = delete;
  FileHold& operator=(const FileHold&) = delete;
  ~FileHold();

  bool canRead() const;
  bool canWrite() const;

 private:
  void count(int step);

  std::shared_ptr<FileUse> use_;
  DWORD access_;
  DWORD share_;
};

class FileSharing {
 public:
  bool isOpen(Oid file) const;
  /// Whether the openings that there are and a new one allow each other.
  bool allows(Oid file, DWORD access, DWORD share) const;
  std::unique_ptr<FileHold> hold(Oid file, DWORD access, DWORD share);

 private:
  std::map<Oid, std::weak_ptr<FileUse>> uses_;
};

}  // namespace emulator
