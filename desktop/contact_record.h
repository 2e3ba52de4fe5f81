// A contact as a record on the wire, in both directions.
//
//   to the device    u32 number of fields, the fields (see contact_fields.h)
//   from the device  record header, all fields but the one that the device is never asked for: "file as"
//
// The device composes "Last, First" to file a contact by whenever a record has both of these fields, empty or not,
// and files one that is named by nothing in the record by a comma. So an empty name is never sent together with
// the other one, and a contact without both names always comes with what to file it by.
#pragma once

#include <vector>

#include "desktop/contact.h"
#include "desktop/wire.h"

namespace desktop {

/// The records that make the device's item the given contact, when they are written one after another. A new item
/// gets only what there is; of one that `isThere` the rest is emptied.
std::vector<Bytes> contactRecords(const Contact& contact, bool isThere);

/// Reads the record of the given item. Throws ProtocolError for any other record, and for one that lacks a field.
Contact readContact(WireReader& reader, std::uint32_t oid);

}  // namespace desktop
