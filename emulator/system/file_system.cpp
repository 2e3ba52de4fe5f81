#include "emulator/system/file_system.h"

#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "platform/errors.h"

namespace emulator {
namespace {

constexpr DWORD kNoAttributes = 0xFFFFFFFF;

class OpenFile : public ClosableObject {
 public:
  OpenFile(Oid file, std::unique_ptr<FileHold> hold) : file_(file), hold_(std::move(hold)) {}

  Oid file() const { return file_; }
  const FileHold& hold() const { return *hold_; }

  std::int64_t position = 0;

 private:
  Oid file_;
  std::unique_ptr<FileHold> hold_;
};

bool isDisposition(DWORD disposition) {
  return disposition >= CREATE_NEW && disposition <= TRUNCATE_EXISTING;
}
bool makesMissing(DWORD disposition) {
  return disposition != OPEN_EXISTING && disposition != TRUNCATE_EXISTING;
}
bool truncates(DWORD disposition) {
  return disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING;
}

/// The distance of a seek: `high` holds its upper half when it is given.
std::int64_t distanceOf(LONG low, const LONG* high) {
  if (high == nullptr) return low;
  return (std::int64_t{*high} << 32) | static_cast<DWORD>(low);
}

/// The position that a seek reaches; nothing for an unknown method or one that 63 bits cannot hold.
std::optional<std::int64_t> target(std::int64_t distance, DWORD method, std::int64_t current,
                                   std::int64_t end) {
  if (method > FILE_END) return std::nullopt;
  const std::int64_t origin = method == FILE_BEGIN ? 0 : method == FILE_CURRENT ? current : end;
  std::int64_t position = 0;
  if (__builtin_add_overflow(origin, distance, &position)) return std::nullopt;
  return position;
}

}  // namespace

HANDLE FileSystem::createFile(std::u16string_view path, DWORD access, DWORD share, DWORD disposition,
                              DWORD attributes) {
  if (!isDisposition(disposition)) return fail(ERROR_INVALID_PARAMETER);
  const FilePlace place = tree_.locate(path);
  if (place.error != ERROR_SUCCESS) return fail(place.error);
  return place.node ? openExisting(*place.node, access, share, disposition, attributes)
                    : makeFile(place, access, share, disposition, attributes);
}

bool FileSystem::readFile(HANDLE file, void* buffer, DWORD count, DWORD* bytesRead) {
  if (bytesRead != nullptr) *bytesRead = 0;
  auto* open = handles_.find<OpenFile>(file);
  if (open == nullptr) return lastError_.fail(ERROR_INVALID_HANDLE);
  if (!open->hold().canRead()) return lastError_.fail(ERROR_ACCESS_DENIED);
  const std::size_t length = tree_.read(open->file(), open->position, {static_cast<BYTE*>(buffer), count});
  open->position += static_cast<std::int64_t>(length);
  if (bytesRead != nullptr) *bytesRead = static_cast<DWORD>(length);
  return true;
}

bool FileSystem::writeFile(HANDLE file, const void* buffer, DWORD count, DWORD* bytesWritten) {
  if (bytesWritten != nullptr) *bytesWritten = 0;
  auto* open = handles_.find<OpenFile>(file);
  if (open == nullptr) return lastError_.fail(ERROR_INVALID_HANDLE);
  if (!open->hold().canWrite()) return lastError_.fail(ERROR_ACCESS_DENIED);
  if (count == 0) return true;
  if (open->position > kMaxFileBytes - count) return lastError_.fail(ERROR_DISK_FULL);
  tree_.write(open->file(), open->position, {static_cast<const BYTE*>(buffer), count});
  open->position += count;
  if (bytesWritten != nullptr) *bytesWritten = count;
  return true;
}

DWORD FileSystem::setFilePointer(HANDLE file, LONG distance, LONG* high, DWORD method) {
  const auto refuse = [this](DWORD error) {
    lastError_.set(error);
    return INVALID_SET_FILE_POINTER;
  };
  auto* open = handles_.find<OpenFile>(file);
  if (open == nullptr) return refuse(ERROR_INVALID_HANDLE);
  const auto node = tree_.node(open->file());
  const auto position = target(distanceOf(distance, high), method, open->position, node ? node->size : 0);
  if (!position) return refuse(ERROR_INVALID_PARAMETER);
  if (*position < 0) return refuse(ERROR_NEGATIVE_SEEK);
  // Without a place for the upper half, a position that needs one would look like another or like the
  // failure.
  if (high == nullptr && *position >= INVALID_SET_FILE_POINTER) return refuse(ERROR_INVALID_PARAMETER);
  open->position = *position;
  if (high != nullptr) *high = static_cast<LONG>(*position >> 32);
  return static_cast<DWORD>(*position);
}

bool FileSystem::deleteFile(std::u16string_view path) {
  const FilePlace place = tree_.locate(path);
  if (place.error != ERROR_SUCCESS) return lastError_.fail(place.error);
  if (!place.node) return lastError_.fail(ERROR_FILE_NOT_FOUND);
  if (place.node->isFolder() || place.node->isReadOnly()) return lastError_.fail(ERROR_ACCESS_DENIED);
  if (sharing_.isOpen(place.node->oid)) return lastError_.fail(ERROR_SHARING_VIOLATION);
  tree_.remove(place.node->oid);
  return true;
}

DWORD FileSystem::fileAttributes(std::u16string_view path) {
  const FilePlace place = tree_.locate(path);
  if (place.node) return place.node->attributes;
  lastError_.set(place.error != ERROR_SUCCESS ? place.error : ERROR_FILE_NOT_FOUND);
  return kNoAttributes;
}

HANDLE FileSystem::fail(DWORD error) {
  lastError_.set(error);
  return INVALID_HANDLE_VALUE;
}

HANDLE FileSystem::makeFile(const FilePlace& place, DWORD access, DWORD share, DWORD disposition,
                            DWORD attributes) {
  if (!makesMissing(disposition)) return fail(ERROR_FILE_NOT_FOUND);
  const FileNode made = tree_.make(place.folder, place.name, attributes & ~FILE_ATTRIBUTE_DIRECTORY);
  lastError_.set(ERROR_SUCCESS);
  return handleFor(made.oid, access, share);
}

HANDLE FileSystem::openExisting(const FileNode& node, DWORD access, DWORD share, DWORD disposition,
                                DWORD attributes) {
  if (disposition == CREATE_NEW) return fail(ERROR_FILE_EXISTS);
  if (node.isFolder()) return fail(ERROR_ACCESS_DENIED);
  if (disposition == TRUNCATE_EXISTING && (access & GENERIC_WRITE) == 0) return fail(ERROR_INVALID_PARAMETER);
  const DWORD needed = truncates(disposition) ? access | GENERIC_WRITE : access;
  if (node.isReadOnly() && (needed & GENERIC_WRITE) != 0) return fail(ERROR_ACCESS_DENIED);
  if (!sharing_.allows(node.oid, needed, share)) return fail(ERROR_SHARING_VIOLATION);
  if (truncates(disposition)) tree_.truncate(node.oid);
  if (disposition == CREATE_ALWAYS) tree_.setAttributes(node.oid, attributes & ~FILE_ATTRIBUTE_DIRECTORY);
  lastError_.set(disposition == OPEN_ALWAYS ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
  return handleFor(node.oid, access, share);
}

HANDLE FileSystem::handleFor(Oid file, DWORD access, DWORD share) {
  return handles_.add<HANDLE>(std::make_unique<OpenFile>(file, sharing_.hold(file, access, share)));
}

}  // namespace emulator
