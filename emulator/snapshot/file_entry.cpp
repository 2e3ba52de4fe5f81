#include "emulator/snapshot/file_entry.h"

#include <array>

#include "emulator/ink/note_file.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

struct Reading {
  FileEntry entry;
  Ticks now;
};

bool readFlag(const JsonNode& node) {
  return !node.isNull() && node.flag();
}

void giveContents(Reading& to, const JsonNode& node, Bytes contents) {
  if (to.entry.contents) node.refuse("data and note are both the contents");
  to.entry.contents = std::move(contents);
}

Bytes readNote(const JsonNode& node) {
  if (node.isNull()) return {};
  const std::u16string text = readText(node);
  if (text.find(u'\0') != std::u16string::npos) node.refuse("has a NUL, where a text ends");
  return encodeNoteFile(text);
}

constexpr std::array kFields{
    Field<Reading>{"path", [](Reading& to, const JsonNode& node) { to.entry.path = readText(node); }},
    Field<Reading>{"oid",
                   [](Reading& to, const JsonNode& node) {
                     if (!node.isNull()) to.entry.oid = readOid(node);
                   }},
    Field<Reading>{"directory",
                   [](Reading& to, const JsonNode& node) { to.entry.isFolder = readFlag(node); }},
    Field<Reading>{"read_only",
                   [](Reading& to, const JsonNode& node) { to.entry.isReadOnly = readFlag(node); }},
    Field<Reading>{
        "written",
        [](Reading& to, const JsonNode& node) { to.entry.written = node.isNull() ? to.now : readUtc(node); }},
    Field<Reading>{"data",
                   [](Reading& to, const JsonNode& node) {
                     giveContents(to, node, node.isNull() ? Bytes() : readBytes(node));
                   }},
    Field<Reading>{"note", [](Reading& to, const JsonNode& node) { giveContents(to, node, readNote(node)); }},
};

}  // namespace

FileEntry readFileEntry(const JsonNode& node, Ticks now) {
  Reading reading{{}, now};
  readFields<Reading>(node, kFields, reading);
  return std::move(reading.entry);
}

}  // namespace emulator
