// Files that the device holds for the time being, while what they belong to travels.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "desktop/attached_file.h"
#include "desktop/session.h"

namespace desktop {

/// Owns files on the device: those that are left are removed at the end, whatever the end is, as long as the device
/// still answers.
///
/// The protocol has no command that deletes a file, but the device consumes the files of a mail's attachments. So a
/// mail is added that has the files attached, and deleted.
class TemporaryFiles {
 public:
  explicit TemporaryFiles(Session& session) : session_(session) {}
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;
  ~TemporaryFiles();

  /// Takes over those files that the device has. One that isn't there any more does no harm.
  void own(std::span<const AttachedFile> files);

  /// Puts the data into a new file and gives its path. Throws DeviceRefusal when the device doesn't take it.
  std::u16string put(BytesView data);

  /// The device has consumed all of them.
  void release() { paths_.clear(); }

  /// Throws DeviceRefusal when the device keeps them.
  void remove();

 private:
  std::u16string freePath();

  Session& session_;
  std::vector<std::u16string> paths_;
  unsigned last_ = 0;  ///< the number in the newest file's name
};

}  // namespace desktop
