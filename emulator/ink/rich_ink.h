// The rich-ink control: a window class whose windows hold a text and stream it in and out.
#pragma once

#include <map>
#include <string>

#include "emulator/ink/edit_stream.h"
#include "emulator/system/os_version.h"
#include "emulator/system/windows.h"

namespace emulator {

/// Came with Pocket PC 2002; older devices don't have the library.
inline constexpr OsVersion kFirstVersionWithRichInk{3, 0, 11171};

/// A window keeps its text as it is, line ends included. EM_STREAMIN replaces it and EM_STREAMOUT gives it,
/// as SF_UTEXT or SF_PWI; both answer the number of characters. A text that comes in ends at its first NUL,
/// or else where the stream ends; an odd last byte is no character. The stream's error word says what went
/// wrong: the callback's own error, ERROR_INVALID_DATA for a file that is no note, ERROR_INVALID_PARAMETER
/// for another format. The window's text stays what it was then.
class RichInk {
 public:
  explicit RichInk(Windows& windows) : windows_(windows) {}

  /// What the library's entry does. The class may be there already.
  void registerClass();
  /// What happens when the library is unloaded. Windows that are open stay.
  void unregisterClass();

 private:
  LRESULT receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT streamIn(HWND window, UINT format, EDITSTREAM& stream);
  LRESULT streamOut(HWND window, UINT format, EDITSTREAM& stream);

  Windows& windows_;
  std::map<HWND, std::u16string> texts_;
  ChunkSizes chunkSizes_;  ///< goes on from one transfer to the next, so that each is cut up differently
};

}  // namespace emulator
