// Window classes, windows and the messages that reach them. Nothing is drawn.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "emulator/system/last_error.h"
#include "platform/windows.h"

namespace emulator {

using WindowProcedure = std::function<LRESULT(HWND, UINT, WPARAM, LPARAM)>;

struct Window {
  std::u16string className;
  std::u16string title;
  DWORD style = 0;
  HWND parent = nullptr;
  WindowProcedure procedure;
  bool visible = false;
};

/// Class names and titles are compared without regard to case.
class Windows {
 public:
  explicit Windows(LastError& lastError) : lastError_(lastError) {}

  /// The class's number; 0 with ERROR_CLASS_ALREADY_EXISTS, or with ERROR_INVALID_PARAMETER for an empty
  /// name.
  ATOM registerClass(std::u16string_view name, WindowProcedure procedure);
  /// Windows of the class stay. Nothing when there is no such class.
  void unregisterClass(std::u16string_view name);
  bool hasClass(std::u16string_view name) const;
  /// Null with ERROR_CANNOT_FIND_WND_CLASS. The procedure gets no message about it.
  HWND create(std::u16string_view className, std::u16string_view title, DWORD style, HWND parent);
  /// A window of another program on the device, whose class is not known here.
  HWND add(Window window);

  /// The oldest window without a parent that has the class and the title that are given; null when there is
  /// none.
  HWND find(std::optional<std::u16string_view> className, std::optional<std::u16string_view> title) const;
  /// Null when there is no such window.
  const Window* get(HWND window) const;

  /// Whether the window was visible before. Command 0 hides it, any other shows it.
  bool show(HWND window, int command);
  bool update(HWND window);
  /// Tells the window's procedure with WM_DESTROY, then removes it and the windows in it. False, with
  /// ERROR_INVALID_WINDOW_HANDLE, when there is none.
  bool destroy(HWND window);
  /// What the window's procedure answers; 0 with ERROR_INVALID_WINDOW_HANDLE when there is no such window.
  LRESULT send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  /// Removes a window without telling its procedure: its program has ended.
  void remove(HWND window);

  std::size_t count() const { return windows_.size(); }

 private:
  struct Class {
    std::u16string name;
    ATOM atom;
    WindowProcedure procedure;
  };

  ATOM freeAtom() const;
  Window* lookUp(HWND window);

  LastError& lastError_;
  std::map<std::u16string, Class> classes_;  ///< by folded name
  std::map<HWND, Window> windows_;
  std::uintptr_t last_ = 0x00A00000;  ///< Handles are not given out twice, nor those of kernel objects.
};

}  // namespace emulator
