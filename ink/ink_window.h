// An invisible window of the rich-ink control, which alone can read and write note files.
#pragma once

#include <string>

#include "platform/rich_ink.h"

namespace qorv {

/// Takes the content of a note file and gives it as plain text, or the other way round. Whether a transfer
/// went well is not told: what could not be read is an empty text, and what could not be written is not in
/// the file.
class InkWindow {
 public:
  InkWindow();
  InkWindow(const InkWindow&) = delete;
  InkWindow& operator=(const InkWindow&) = delete;
  ~InkWindow();

  /// False when the platform has no such window.
  explicit operator bool() const { return window_ != nullptr; }

  /// From a note file that is open for reading.
  void load(HANDLE file);
  [[nodiscard]] std::u16string text();

  void setText(std::u16string text);
  /// Into the note file at the path, which is made anew.
  void save(const std::u16string& path);

 private:
  void transfer(UINT message, UINT format, void* cookie, EDITSTREAMCALLBACK callback);

  HWND window_;
};

}  // namespace qorv
