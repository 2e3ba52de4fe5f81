// "files": files and folders, each known by its identifier or its path.
#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "emulator/ink/note_file.h"
#include "emulator/snapshot/file_entry.h"
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/snapshot/values.h"
#include "emulator/system/case_fold.h"
#include "emulator/system/path_folders.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

/// The place that an entry's path names, with its folders made.
FilePlace placeOf(FileTree& files, const JsonNode& node, const std::u16string& path) {
  if (const auto reason = makeFoldersTo(files, path)) requireMember(node, "path").refuse(*reason);
  return files.locate(path);
}

/// Whether a folder is another one or lies somewhere in it.
bool isWithin(FileTree& files, Oid folder, Oid outer) {
  for (auto at = files.node(folder); at; at = files.node(at->parent)) {
    if (at->oid == outer) return true;
  }
  return false;
}

/// The object that has the entry's identifier goes where the entry's path says.
void moveTo(FileTree& files, const JsonNode& node, const FileNode& file, const std::u16string& path) {
  if (files.pathOf(file.oid) == path) return;
  const FilePlace place = placeOf(files, node, path);
  const bool isTaken = place.node && place.node->oid != file.oid;
  if (isTaken) requireMember(node, "path").refuse("another file or folder is there");
  if (isWithin(files, place.folder, file.oid)) requireMember(node, "path").refuse("is in the folder itself");
  files.move(file.oid, place.folder, place.name);
}

FileNode makeNew(FileTree& files, const JsonNode& node, const FileEntry& entry, const FilePlace& place) {
  const DWORD attributes = entry.isFolder.value_or(false) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
  if (place.node) {
    // An empty folder gives way to one with the entry's identifier: the folders of a fresh device may have
    // got others.
    const bool givesWay =
        place.node->isFolder() && entry.isFolder.value_or(true) && !files.nextChild(place.node->oid, 0);
    if (!givesWay) {
      requireMember(node, "oid").refuse("the path has identifier " + std::to_string(place.node->oid));
    }
    files.remove(place.node->oid);
    return files.make(place.folder, place.name, FILE_ATTRIBUTE_DIRECTORY, entry.oid);
  }
  return files.make(place.folder, place.name, attributes, entry.oid);
}

/// The object that the entry changes, made when there is none.
FileNode objectOf(Device& device, const JsonNode& node, const FileEntry& entry) {
  FileTree& files = device.fileTree;
  const auto holder = entry.oid ? device.store.kindOf(*entry.oid) : std::nullopt;
  if (holder && *holder != ObjectKind::File && *holder != ObjectKind::Directory) {
    refuseHeld(requireMember(node, "oid"), *holder);
  }
  if (holder) {
    const FileNode file = files.node(*entry.oid).value();
    if (entry.path) moveTo(files, node, file, *entry.path);
    return file;
  }
  if (!entry.path) node.refuse("a new file has a path");
  const FilePlace place = placeOf(files, node, *entry.path);
  if (place.node && !entry.oid) return *place.node;
  return makeNew(files, node, entry, place);
}

void writeContents(FileTree& files, const FileNode& file, const Bytes& data) {
  files.truncate(file.oid);
  files.write(file.oid, 0, data);
}

/// The identifier of the object that was made or changed.
Oid loadFile(Device& device, const JsonNode& node) {
  const FileEntry entry = readFileEntry(node, device.clock.now());
  const FileNode file = objectOf(device, node, entry);
  if (entry.isFolder && *entry.isFolder != file.isFolder()) {
    requireMember(node, "directory").refuse(file.isFolder() ? "this is a folder" : "this is a file");
  }
  if (entry.contents && file.isFolder()) {
    requireMember(node, node.member("note") ? "note" : "data").refuse("a folder has none");
  }
  if (entry.contents) writeContents(device.fileTree, file, *entry.contents);
  if (entry.isReadOnly) {
    const DWORD others = file.attributes & ~DWORD{FILE_ATTRIBUTE_READONLY};
    device.fileTree.setAttributes(file.oid, *entry.isReadOnly ? others | FILE_ATTRIBUTE_READONLY : others);
  }
  if (entry.written) device.fileTree.setWritten(file.oid, *entry.written);
  return file.oid;
}

/// Two entries with one path would overwrite each other, or fight over its identifier.
void requireOwnPaths(const std::vector<JsonNode>& entries) {
  std::unordered_set<std::u16string> paths;
  for (const JsonNode& entry : entries) {
    const auto path = entry.member("path");
    if (!path) continue;
    const std::u16string text = readText(*path);
    if (!paths.insert(foldCase(text)).second)
      path->refuse(toUtf8(text) + " is the path of another entry as well");
  }
}

[[noreturn]] void refuseRepeated(FileTree& files, const JsonNode& entry, Oid oid) {
  const std::string reason = toUtf8(files.pathOf(oid)) + " is the file of another entry as well";
  (entry.member("path") ? requireMember(entry, "path") : requireMember(entry, "oid")).refuse(reason);
}

/// How deep an entry's path lies.
std::ptrdiff_t depthOf(const JsonNode& node) {
  const auto path = node.member("path");
  return path && path->isText() ? std::ranges::count(path->text(), '\\') : 0;
}

Json fileToJson(FileTree& files, const FileNode& file, const std::u16string& path) {
  Json entry = Json::object({{"path", textToJson(path)},
                             {"oid", file.oid},
                             {"directory", file.isFolder()},
                             {"read_only", file.isReadOnly()},
                             {"written", utcText(file.written)}});
  if (file.isFolder()) return entry;
  Bytes data(static_cast<std::size_t>(file.size));
  files.read(file.oid, 0, data);
  if (const auto note = decodeNoteFile(data)) {
    entry["note"] = textToJson(*note);
  } else {
    entry["data"] = bytesToJson(data);
  }
  return entry;
}

/// A folder before what is in it.
void dumpFolder(FileTree& files, Oid folder, const std::u16string& path, Json& list) {
  for (auto file = files.nextChild(folder, 0); file; file = files.nextChild(folder, file->oid)) {
    const std::u16string filePath = path + u'\\' + file->name;
    list.push_back(fileToJson(files, *file, filePath));
    if (file->isFolder()) dumpFolder(files, file->oid, filePath, list);
  }
}

}  // namespace

void loadFiles(Device& device, const JsonNode& node) {
  std::vector<JsonNode> entries;
  node.forEachElement([&entries](const JsonNode& entry) { entries.push_back(entry); });
  requireOwnPaths(entries);
  // Folders before what is in them: one that is made on the way would not get the identifier that its own
  // entry gives.
  std::ranges::stable_sort(entries, {}, depthOf);
  std::unordered_set<Oid> loaded;
  for (const JsonNode& entry : entries) {
    const Oid oid = loadFile(device, entry);
    // One entry may name it by its path and another by its identifier.
    if (!loaded.insert(oid).second) refuseRepeated(device.fileTree, entry, oid);
  }
}

Json dumpFiles(Device& device) {
  Json list = Json::array();
  dumpFolder(device.fileTree, kRootFolder, u"", list);
  return list;
}

}  // namespace emulator
