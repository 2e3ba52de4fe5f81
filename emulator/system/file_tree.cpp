#include "emulator/system/file_tree.h"

#include <algorithm>

#include "emulator/system/case_fold.h"
#include "emulator/system/file_path.h"
#include "platform/errors.h"

namespace emulator {
namespace {

/// What a file can keep beside being a folder.
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY;

DWORD storedAttributes(DWORD attributes) {
  const DWORD kept = attributes & kKeptAttributes;
  return (kept & FILE_ATTRIBUTE_DIRECTORY) != 0 ? kept : kept | FILE_ATTRIBUTE_ARCHIVE;
}

/// Of a query for oid, parent, name, attributes, size, written.
std::optional<FileNode> nextNode(Cursor row) {
  if (!row.next()) return std::nullopt;
  return FileNode{row.get<Oid>(0),   row.get<Oid>(1),          row.get<std::u16string>(2),
                  row.get<DWORD>(3), row.get<std::int64_t>(4), row.get<Ticks>(5)};
}

}  // namespace

FilePlace FileTree::locate(std::u16string_view path) {
  FilePlace place;
  FilePath parts;
  place.error = splitPath(path, parts);
  if (place.error != ERROR_SUCCESS) return place;
  if (parts.name.empty()) {
    place.node = FileNode();
    return place;
  }
  for (const std::u16string_view name : parts.folders) {
    const auto folder = child(place.folder, name);
    if (!folder || !folder->isFolder()) {
      place.error = ERROR_PATH_NOT_FOUND;
      return place;
    }
    place.folder = folder->oid;
  }
  place.name = parts.name;
  place.node = child(place.folder, parts.name);
  return place;
}

std::optional<FileNode> FileTree::node(Oid oid) {
  return nextNode(store_.connection().query(
      "SELECT oid, parent, name, attributes, size, written FROM file WHERE oid = ?", oid));
}

std::optional<FileNode> FileTree::child(Oid folder, std::u16string_view name) {
  return nextNode(store_.connection().query(
      "SELECT oid, parent, name, attributes, size, written FROM file WHERE parent = ? AND folded = ?", folder,
      foldCase(name)));
}

std::optional<FileNode> FileTree::nextChild(Oid folder, Oid after) {
  return nextNode(
      store_.connection().query("SELECT oid, parent, name, attributes, size, written FROM file"
                                " WHERE parent = ? AND oid > ? ORDER BY oid LIMIT 1",
                                folder, after));
}

std::u16string FileTree::pathOf(Oid oid) {
  std::u16string path;
  for (auto part = node(oid); part; part = node(part->parent)) path.insert(0, u'\\' + part->name);
  return path;
}

FileNode FileTree::make(Oid folder, std::u16string_view name, DWORD attributes, std::optional<Oid> oid) {
  const DWORD stored = storedAttributes(attributes);
  const ObjectKind kind = (stored & FILE_ATTRIBUTE_DIRECTORY) != 0 ? ObjectKind::Directory : ObjectKind::File;
  if (oid) store_.claim(*oid, kind);
  FileNode node{oid ? *oid : store_.allocate(kind), folder, std::u16string(name), stored, 0, clock_.now()};
  store_.connection().run(
      "INSERT INTO file (oid, parent, name, folded, attributes, size, written) VALUES (?, ?, ?, ?, ?, ?, ?)",
      node.oid, node.parent, node.name, foldCase(name), node.attributes, node.size, node.written);
  return node;
}

DWORD FileTree::makeFolders(std::u16string_view path) {
  FilePath parts;
  if (const DWORD error = splitPath(path, parts); error != ERROR_SUCCESS) return error;
  if (!parts.name.empty()) parts.folders.push_back(parts.name);
  Oid folder = kRootFolder;
  for (const std::u16string_view name : parts.folders) {
    const auto existing = child(folder, name);
    if (existing && !existing->isFolder()) return ERROR_PATH_NOT_FOUND;
    folder = existing ? existing->oid : make(folder, name, FILE_ATTRIBUTE_DIRECTORY).oid;
  }
  return ERROR_SUCCESS;
}

void FileTree::move(Oid oid, Oid folder, std::u16string_view name) {
  store_.connection().run("UPDATE file SET parent = ?, name = ?, folded = ? WHERE oid = ?", folder, name,
                          foldCase(name), oid);
}

void FileTree::remove(Oid oid) {
  while (const auto inside = nextChild(oid, 0)) remove(inside->oid);
  store_.connection().run("DELETE FROM file WHERE oid = ?", oid);
  store_.release(oid);
}

std::size_t FileTree::read(Oid file, std::int64_t offset, std::span<BYTE> buffer) {
  const auto found = node(file);
  const std::int64_t length =
      found ? std::clamp<std::int64_t>(found->size - offset, 0, std::ssize(buffer)) : 0;
  const auto part = buffer.first(static_cast<std::size_t>(length));
  if (!part.empty()) contents_.read(file, offset, part);
  return part.size();
}

void FileTree::write(Oid file, std::int64_t offset, ByteView data) {
  contents_.write(file, offset, data);
  store_.connection().run("UPDATE file SET size = max(size, ?), written = ? WHERE oid = ?",
                          offset + std::ssize(data), clock_.now(), file);
}

void FileTree::truncate(Oid file) {
  contents_.clear(file);
  store_.connection().run("UPDATE file SET size = 0, written = ? WHERE oid = ?", clock_.now(), file);
}

void FileTree::setAttributes(Oid oid, DWORD attributes) {
  store_.connection().run("UPDATE file SET attributes = ? WHERE oid = ?", storedAttributes(attributes), oid);
}

void FileTree::setWritten(Oid oid, Ticks written) {
  store_.connection().run("UPDATE file SET written = ? WHERE oid = ?", written, oid);
}

}  // namespace emulator
