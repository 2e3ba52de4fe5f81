// The lists of attachments in records of mail, which have another form in each direction.
//
//   from the device  path "\n" name "\n" for each; the paths are those of temporary files
//   to the device    count " " then for each: length " " path length " " name; lengths in UTF-16 units
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/attached_file.h"

namespace desktop {

/// Paths and names are shorter than this.
constexpr std::size_t kMaxAttachmentText = 260;

/// Paths and names. A name may have line ends, so that it could pretend to be a path: only temporary files of the
/// agent's, in the folder of the first one, are paths. A list that doesn't begin with one, as an empty list, gives
/// one file without path and name: there are attachments that can't be had.
std::vector<AttachedFile> readAttachmentList(std::u16string_view list);

std::u16string writeAttachmentList(const std::vector<AttachedFile>& files);

}  // namespace desktop
