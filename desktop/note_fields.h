// The fields of a note's record, in the order in which they travel.
#pragma once

#include <array>

#include "desktop/note.h"
#include "desktop/record_field.h"

namespace desktop {

using NoteField = RecordField<Note>;

inline constexpr std::array kNoteFields{
    NoteField{1, "name", &Note::name},
    NoteField{2, "content", &Note::content},
};

}  // namespace desktop
