// What standard files hold for the device: items, and what could not be taken.
#pragma once

#include <string>
#include <vector>

#include "desktop/item.h"

namespace desktop {

/// An item that was not taken.
struct FileProblem {
  std::string
      where;  ///< "file.ics:12: UID", the line being the item's BEGIN; without the UID when it has none
  std::string what;
};

struct FileItem {
  std::string file;
  std::string uid;  ///< empty when the file gives none
  Item item;
  std::vector<std::string> notes;  ///< what was left out or adapted, one sentence each
};

struct FileItems {
  std::vector<FileItem> items;  ///< in the files' order
  std::vector<FileProblem> problems;
};

}  // namespace desktop
