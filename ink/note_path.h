// Where notes lie: every "pwi" file directly in "\My Documents" is one, and its name is the note's.
#pragma once

#include <string>
#include <string_view>

#include "platform/types.h"

namespace qorv {

/// Finds all notes.
inline constexpr LPCWSTR kNotePattern = u"\\My Documents\\*.pwi";

/// A path's file name without folder and extension.
std::u16string noteNameOf(std::u16string_view path);

/// A name with "_" in place of every character that a file's name can't have, or that would give it another
/// extension.
std::u16string fileNameFor(std::u16string_view noteName);

/// "\My Documents\NAME.pwi"
std::u16string notePath(std::u16string_view fileName);
/// "\My Documents\NoteNUMBER.pwi"
std::u16string unnamedNotePath(DWORD number);
/// "\My Documents\NAME_NUMBER.pwi", for a name that is taken; NAME is "Note" when it is empty.
std::u16string numberedNotePath(std::u16string_view fileName, DWORD number);

/// False for a path that the platform takes for no file: one that is too long, or has a control character.
bool canBeFile(std::u16string_view path);

}  // namespace qorv
