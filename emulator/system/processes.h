// Programs that the agent starts. They do not run here: what they would show is scripted.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "emulator/system/clock.h"
#include "emulator/system/file_tree.h"
#include "emulator/system/handle_table.h"
#include "emulator/system/last_error.h"
#include "emulator/system/windows.h"
#include "platform/system.h"

namespace emulator {

/// A program that shows one window, and ends when it is started with "/C" or its window is told WM_DESTROY.
/// Delays are in milliseconds of the device's clock.
struct ProgramScript {
  std::u16string windowClass;
  std::u16string windowTitle;
  DWORD appearsAfter = 0;
  DWORD closesAfter = 0;
};

struct Launch {
  std::u16string program;
  std::u16string commandLine;
};

class Processes {
 public:
  Processes(FileTree& tree, Windows& windows, Clock& clock, HandleTable& handles, LastError& lastError)
      : tree_(tree), windows_(windows), clock_(clock), handles_(handles), lastError_(lastError) {}

  /// From now on the device has that program, under exactly this name (case aside).
  void install(std::u16string_view program, ProgramScript script);

  /// CreateProcessW: starts a program that is installed, or a file of the device, which then shows nothing.
  /// False with ERROR_FILE_NOT_FOUND otherwise. The caller closes both handles of *information, which may be
  /// null.
  bool create(std::u16string_view program, std::u16string_view commandLine, PROCESS_INFORMATION* information);

  /// What was started, in order.
  const std::vector<Launch>& launches() const { return launches_; }

 private:
  struct Program {
    ProgramScript script;
    HWND window = nullptr;
  };

  bool isFile(std::u16string_view program);
  void run(Program& program, std::u16string_view commandLine);
  void showWindow(Program& program);
  PROCESS_INFORMATION describe();

  FileTree& tree_;
  Windows& windows_;
  Clock& clock_;
  HandleTable& handles_;
  LastError& lastError_;
  std::map<std::u16string, Program> programs_;  ///< by folded name
  std::vector<Launch> launches_;
};

}  // namespace emulator
