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

  /// Removes those that are still there, and makes sure of it. Throws DeviceRefusal when the device keeps some of
  /// them, or what was to take them away; they are given up then.
  void remove();

 private:
  std::u16string freePath();
  void removeOnce();
  void dropGone();
  bool isDone() const { return paths_.empty() && carriers_.empty(); }
  std::string spellRest() const;

  Session& session_;
  std::vector<std::u16string> paths_;
  std::vector<std::uint32_t> carriers_;  ///< mails that were added to take files away
  unsigned last_ = 0;                    ///< the number in the newest file's name
};

}  // namespace desktop
