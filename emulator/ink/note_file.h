// The form in which the emulated rich-ink control keeps a note in a file.
//
//   offset  size  field
//        0     8  "QVINK" 0D 0A 1A
//        8     2  u16 version: 1
//       10     4  u32 characters
//       14   2 n  the text, UTF-16LE, without a NUL
//
// Integers are little-endian. It is the emulated device's own: the platform's form is known to its control
// only.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulator/store/object_store.h"

namespace emulator {

Bytes encodeNoteFile(std::u16string_view text);

/// The text; nothing when the bytes are no note file of this version, or more or less than one. What can be
/// decoded is encoded to the same bytes again.
std::optional<std::u16string> decodeNoteFile(ByteView file);

}  // namespace emulator
