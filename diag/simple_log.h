// A debug log: lines of ANSI text in a file under "\temp\".
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace qorv {

/// The folder is not made: where it is missing there is no log. Nothing in a line but its text: no time, no
/// level.
class CCESimpleLog {
 public:
  /// Writes to "\temp\qrvdbg.log", which is begun anew.
  CCESimpleLog();
  /// Appends to "\temp\NAME.log", made when it is missing. Of the name the first 12 characters count.
  explicit CCESimpleLog(std::u16string_view name);
  CCESimpleLog(const CCESimpleLog&) = delete;
  CCESimpleLog& operator=(const CCESimpleLog&) = delete;
  virtual ~CCESimpleLog();

  /// Writes a line. A text that is null, empty, or longer than 512 characters is dropped; one that can't be
  /// converted is replaced by a line that says so. A line that can't be written is told to the debugger.
  void LogThis(LPCWSTR text);

 private:
  void open();

  HANDLE file_ = nullptr;  ///< null is no file; what a failed open gives is kept, and every line fails then
  std::u16string path_;    ///< empty without a name
};

}  // namespace qorv
