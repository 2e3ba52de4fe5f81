// The standard formats of files that items are kept in; a format may hold items of several types.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "desktop/file_item.h"

namespace desktop {

struct FileFormat {
  const char* name;       ///< "icalendar", for scripts
  const char* extension;  ///< ".ics", in lower case
  const char* beginning;  ///< the first line of such a file; null when it can be any
  /// Of files in folders only those are taken that lie in one of this name; null for any.
  const char* folder;
  /// Reads a whole file. Throws InputError when the text is nothing of the format.
  FileItems (*read)(std::string_view text, const std::string& fileName);
};

extern const FileFormat kCalendarFormat;
extern const FileFormat kVcardFormat;
extern const FileFormat kNoteFormat;

/// All formats; the first one is what a file is taken for that shows nothing else.
std::span<const FileFormat* const> fileFormats();

/// The format that files of that name have; null when it is none's name.
const FileFormat* formatByName(const std::filesystem::path& path);

/// The format that a file has by its name, unless that is text and its first line tells another one; without
/// such a name by its first line.
const FileFormat& formatOf(const std::filesystem::path& path, std::string_view text);

}  // namespace desktop
