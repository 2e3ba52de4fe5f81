#include "channel/host_application.h"

#include <algorithm>
#include <string_view>

#include "platform/files.h"
#include "platform/system.h"
#include "platform/time.h"

namespace qorv {

namespace {

/// What fits the platform's command-line buffer beside its NUL.
constexpr std::size_t kMaxCommandLine = MAX_PATH - 1;

bool isCloseSwitch(LPCWSTR commandLine) {
  const std::u16string_view text = commandLine ? commandLine : u"";
  return text.size() == 2 && (text[0] == u'/' || text[0] == u'-') && (text[1] == u'c' || text[1] == u'C');
}

HWND createHostWindow(HMODULE module) {
  const HostContext& context = hostContext();
  return CreateWindowExW(0, context.windowClassName.c_str(), context.windowName.c_str(), WS_DISABLED, 0, 0,
                         CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, module, nullptr);
}

bool waitUntil(bool appears, LPCWSTR className, LPCWSTR name, DWORD timeout) {
  const DWORD start = GetTickCount();
  while ((FindWindowW(className, name) != nullptr) != appears) {
    if (GetTickCount() - start >= timeout) return false;
    Sleep(kWindowPollInterval);
  }
  return true;
}

}  // namespace

ATOM registerHostWindowClass(const HostWindowNames& names, WNDPROC procedure, HMODULE module,
                             LPCWSTR applicationName) {
  prepareHostContext(module, applicationName, names);
  hostContext().applicationName += u".exe";
  WNDCLASSW description{};
  description.lpfnWndProc = procedure;
  description.hInstance = module;
  description.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  description.lpszClassName = hostContext().windowClassName.c_str();
  return RegisterClassW(&description);
}

bool showSingleInstance(HMODULE module, int showCommand, LPCWSTR commandLine) {
  const HostContext& context = hostContext();
  const HWND running = FindWindowW(context.windowClassName.c_str(), context.windowName.c_str());
  if (isCloseSwitch(commandLine)) {
    if (running) SendMessageW(running, WM_DESTROY, 0, 0);
    return false;
  }
  if (running) return false;
  const HWND window = createHostWindow(module);
  if (!IsWindow(window)) return false;
  ShowWindow(window, showCommand);
  UpdateWindow(window);
  return true;
}

bool launchProgram(LPCWSTR program, LPCWSTR commandLine) {
  std::u16string arguments = commandLine ? commandLine : u"";
  arguments.resize(std::min(arguments.size(), kMaxCommandLine));
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(program, commandLine ? arguments.c_str() : nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, nullptr, &information)) {
    return false;
  }
  CloseHandle(information.hThread);
  CloseHandle(information.hProcess);
  return true;
}

bool waitForWindow(LPCWSTR className, LPCWSTR name, DWORD timeout) {
  return waitUntil(true, className, name, timeout);
}

bool waitForNoWindow(LPCWSTR className, LPCWSTR name, DWORD timeout) {
  return waitUntil(false, className, name, timeout);
}

bool launchAndWaitForStart(LPCWSTR program, LPCWSTR className, LPCWSTR windowName) {
  return launchProgram(program, nullptr) && waitForWindow(className, windowName, kWindowTimeout);
}

bool launchAndWaitForClose(LPCWSTR program, LPCWSTR className, LPCWSTR windowName) {
  return launchProgram(program, u"/C") && waitForNoWindow(className, windowName, kWindowTimeout);
}

}  // namespace qorv
