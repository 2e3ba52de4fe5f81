// A note as a record on the wire, in both directions.
//
//   to the device    u32 number of fields, the fields (see note_fields.h)
//   from the device  record header, fields
#pragma once

#include "desktop/note.h"
#include "desktop/wire.h"

namespace desktop {

Bytes writeNote(const Note& note);

/// Reads the record of the given note. A note that isn't there comes without a name and content. Throws
/// ProtocolError for any other record, and for one that lacks a field.
Note readNote(WireReader& reader, std::uint32_t oid);

/// The name, which comes first, of a record that may be cut short; empty when it isn't there.
std::u16string readNoteName(WireReader record);

}  // namespace desktop
