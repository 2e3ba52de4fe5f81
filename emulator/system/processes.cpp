#include "emulator/system/processes.h"

#include <memory>
#include <utility>

#include "emulator/system/case_fold.h"

namespace emulator {
namespace {

constexpr std::u16string_view kCloseSwitch = u"/C";

class Process : public ClosableObject {};
class Thread : public ClosableObject {};

}  // namespace

void Processes::install(std::u16string_view program, ProgramScript script) {
  programs_.insert_or_assign(foldCase(program), Program{std::move(script)});
}

bool Processes::create(std::u16string_view program, std::u16string_view commandLine,
                       PROCESS_INFORMATION* information) {
  const auto installed = programs_.find(foldCase(program));
  if (installed == programs_.end() && !isFile(program)) return lastError_.fail(ERROR_FILE_NOT_FOUND);
  launches_.push_back({std::u16string(program), std::u16string(commandLine)});
  if (information != nullptr) *information = describe();
  if (installed != programs_.end()) run(installed->second, commandLine);
  return true;
}

bool Processes::isFile(std::u16string_view program) {
  const auto node = tree_.locate(program).node;
  return node && !node->isFolder();
}

void Processes::run(Program& program, std::u16string_view commandLine) {
  if (!equalFolded(commandLine, kCloseSwitch)) {
    clock_.after(program.script.appearsAfter, [this, &program] { showWindow(program); });
  } else if (program.window != nullptr) {
    clock_.after(program.script.closesAfter,
                 [this, window = std::exchange(program.window, nullptr)] { windows_.remove(window); });
  }
}

void Processes::showWindow(Program& program) {
  if (program.window != nullptr) return;
  const auto procedure = [this, &program](HWND window, UINT message, WPARAM, LPARAM) -> LRESULT {
    if (message == WM_DESTROY) {
      windows_.remove(window);
      program.window = nullptr;
    }
    return 0;
  };
  program.window =
      windows_.add({program.script.windowClass, program.script.windowTitle, 0, nullptr, procedure, true});
}

PROCESS_INFORMATION Processes::describe() {
  const auto number = static_cast<DWORD>(launches_.size());
  return {handles_.add<HANDLE>(std::make_unique<Process>()), handles_.add<HANDLE>(std::make_unique<Thread>()),
          number, number};
}

}  // namespace emulator
