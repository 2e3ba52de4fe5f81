// What is known about notes.
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "desktop/item_kind.h"
#include "desktop/item_text.h"
#include "desktop/note_fields.h"
#include "desktop/note_record.h"
#include "desktop/record_json.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::array kColumns{"NAME", "TEXT"};
constexpr auto kLayouts = layoutsOf(kNoteFields);

/// What no file's name can have on the device, and the dot, becomes "_" there.
std::u16string deviceName(std::u16string name) {
  constexpr std::u16string_view kReplaced = u"\\/\"<>.:|?*\r\n\t";
  const auto isReplaced = [&](char16_t letter) {
    return kReplaced.find(letter) != std::u16string_view::npos;
  };
  std::ranges::replace_if(name, isReplaced, u'_');
  return name;
}

const Note& noteIn(const Item& item) {
  return std::get<Note>(item);
}

Item read(WireReader& record, std::uint32_t oid) {
  return readNote(record, oid);
}

bool isMissing(const Item& item) {
  return noteIn(item).name.empty() && noteIn(item).content.empty();
}

void adapt(Item& item, std::vector<std::string>& notes) {
  auto& name = std::get<Note>(item).name;
  const std::u16string held = deviceName(name);
  if (held != name) notes.push_back("its name on the device is " + desktop::quoted(held));
  name = held;
}

std::vector<Bytes> write(const Item& item, bool) {
  return {writeNote(noteIn(item))};
}

/// As a file has it.
Note withFileLineEnds(Note note) {
  note.content = replaceLineEnds(note.content, u"\n");
  return note;
}

std::vector<Difference> compare(const Item& sent, const Item& device) {
  Differences out;
  compareFields(out, kNoteFields, withFileLineEnds(noteIn(sent)), withFileLineEnds(noteIn(device)));
  return out;
}

std::string fileText(const Item& item, const std::string&, const FileStyle&) {
  return toUtf8(replaceLineEnds(noteIn(item).content, u"\n"));
}

std::u16string title(const Item& item) {
  return noteIn(item).name;
}

std::vector<std::string> cells(const Item& item) {
  const std::u16string text = replaceLineEnds(noteIn(item).content, u"\n");
  return {toUtf8(noteIn(item).name), toUtf8(text.substr(0, text.find(u'\n')))};
}

nlohmann::json toJson(const Item& item) {
  nlohmann::json json{{"oid", noteIn(item).oid}};
  addFields(json, kNoteFields, noteIn(item));
  return json;
}

}  // namespace

const ItemKind kNoteKind{
    .type = ItemType::Note,
    .name = "notes",
    .singular = "note",
    .plural = "notes",
    .folder = "notes",
    .format = kNoteFormat,
    .columns = kColumns,
    .layouts = kLayouts,
    .identity = ItemIdentity::ByTitle,
    .sparesEqual = true,
    .read = read,
    .isMissing = isMissing,
    .titleInPart = readNoteName,
    .adapt = adapt,
    .write = write,
    .compare = compare,
    .fileText = fileText,
    .title = title,
    .cells = cells,
    .toJson = toJson,
    .openFiles = openFilesByTitle,
};

}  // namespace desktop
