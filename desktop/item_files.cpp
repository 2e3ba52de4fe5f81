#include "desktop/item_files.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "desktop/input_error.h"
#include "desktop/local_file.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUidName = "UID";
/// As cards of version 4.0 have it, where a UID is an address otherwise.
constexpr std::string_view kTextParameter = ";VALUE=text";

/// ".ics or .vcf or notes/*.txt"
std::string spellExtensions() {
  std::string text;
  for (const FileFormat* format : fileFormats()) {
    const std::string place = format->folder == nullptr ? "" : std::string(format->folder) + "/*";
    text += (text.empty() ? "" : " or ") + place + format->extension;
  }
  return text;
}

/// Whether a file that nobody named is one that was meant.
bool isTaken(const fs::path& file) {
  const FileFormat* format = formatByName(file);
  return format != nullptr &&
         (format->folder == nullptr ||
          fs::absolute(file).lexically_normal().parent_path().filename() == format->folder);
}

std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (isTaken(entry->path()) && entry->is_regular_file()) files.push_back(entry->path());
  }
  if (error) throw InputError(folder.string() + ": " + error.message());
  if (files.empty()) throw InputError(folder.string() + ": no " + spellExtensions() + " file in this folder");
  std::sort(files.begin(), files.end());
  return files;
}

void readInto(FileItems& all, const fs::path& path) {
  const std::string text = readTextFile(path);
  FileItems file = formatOf(path, text).read(text, path.string());
  std::move(file.items.begin(), file.items.end(), std::back_inserter(all.items));
  std::move(file.problems.begin(), file.problems.end(), std::back_inserter(all.problems));
}

/// Whether a line goes on, after its name, with that parameter and that value.
bool isValue(std::string_view rest, std::string_view parameter, std::string_view value) {
  return rest.starts_with(parameter) && rest.substr(parameter.size()).starts_with(':') &&
         rest.substr(parameter.size() + 1) == value;
}

/// Long lines go on in the next one, after a blank.
std::string unfolded(std::string_view text) {
  std::string whole;
  for (const char letter : text) {
    const bool goesOn = (letter == ' ' || letter == '\t') && whole.ends_with('\n');
    if (!goesOn) {
      whole += letter;
      continue;
    }
    whole.pop_back();
    if (whole.ends_with('\r')) whole.pop_back();
  }
  return whole;
}

}  // namespace

FileItems readItemFiles(std::span<const fs::path> paths) {
  FileItems all;
  for (const fs::path& path : paths) {
    if (fs::is_directory(path)) {
      for (const fs::path& file : filesIn(path)) readInto(all, file);
    } else {
      readInto(all, path);
    }
  }
  return all;
}

bool namesOnly(std::string_view text, std::string_view uid) {
  bool isNamed = false;
  std::istringstream lines(unfolded(text));
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.starts_with(kUidName)) continue;
    const std::string_view rest = std::string_view(line).substr(kUidName.size());
    if (!isValue(rest, "", uid) && !isValue(rest, kTextParameter, uid)) return false;
    isNamed = true;
  }
  return isNamed;
}

fs::path makeItemFolder(const fs::path& folder, const ItemKind& kind) {
  const fs::path own = folder / kind.folder;
  std::error_code error;
  fs::create_directories(own, error);
  if (error) throw InputError(own.string() + ": " + error.message());
  return own;
}

}  // namespace desktop
