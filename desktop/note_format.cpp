// Text files as a format of files that notes are kept in: UTF-8, the file's name is the note's.
#include <filesystem>

#include "desktop/file_format.h"
#include "desktop/input_error.h"
#include "desktop/item_text.h"
#include "desktop/pulled_files.h"
#include "desktop/text.h"

namespace desktop {

namespace {

std::u16string contentOf(std::string_view text) {
  text = withoutByteOrderMark(text);
  if (text.find('\0') != std::string_view::npos)
    throw InputError("has a NUL, where a text ends on the device");
  return withDeviceLineEnds(toUtf16(text));
}

FileItems readNoteFile(std::string_view text, const std::string& fileName) {
  FileItems result;
  try {
    Note note;
    const std::filesystem::path file(fileName);
    note.name = titleOfPulledFile(file).value_or(toUtf16(file.stem().string()));
    note.content = contentOf(text);
    result.items.push_back({fileName, "", std::move(note), {}});
  } catch (const InputError& error) {
    result.problems.push_back({fileName, error.what()});
  }
  return result;
}

}  // namespace

// Text files are everybody's: of a folder's only those are taken that lie where notes are kept.
const FileFormat kNoteFormat{.name = "text", .extension = ".txt", .folder = "notes", .read = readNoteFile};

}  // namespace desktop
