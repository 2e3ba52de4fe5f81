#include "desktop/note_record.h"

#include "desktop/device_error.h"
#include "desktop/note_fields.h"

namespace desktop {

Bytes writeNote(const Note& note) {
  WireWriter writer;
  writer.number(kNoteFields.size());
  for (const NoteField& field : kNoteFields) writeField(writer, field, note);
  return writer.take();
}

Note readNote(WireReader& reader, std::uint32_t oid) {
  const auto refuseOther = [](WireReader&, std::uint32_t, Note&) { return false; };
  return readRecord<Note>(reader, "note", oid, kNoteFields, refuseOther);
}

std::u16string readNoteName(WireReader record) {
  try {
    record.raw(kRecordHeaderSize);
    return record.number() == kNoteFields.front().tag ? record.text() : std::u16string();
  } catch (const ProtocolError&) {
    return {};  // it ends before
  }
}

}  // namespace desktop
