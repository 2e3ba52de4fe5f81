// What a host application built from the same sources needs: its window, one instance of it, and waiting for
// it.
#pragma once

#include "channel/host_context.h"
#include "platform/windows.h"

namespace qorv {

/// How long a launched program gets to show its window, or a closing one to lose it.
inline constexpr DWORD kWindowTimeout = 10000;
inline constexpr DWORD kWindowPollInterval = 100;

/// Prepares the host context and registers the class under the name that results. The application name gets
/// ".exe" appended. The class atom, 0 on failure.
ATOM registerHostWindowClass(const HostWindowNames& names, WNDPROC procedure, HMODULE module,
                             LPCWSTR applicationName);

/// With the command line "/C" or "-C", in either case, closes a window that is there. Otherwise makes one
/// unless there is one already. True only when a window was made.
bool showSingleInstance(HMODULE module, int showCommand, LPCWSTR commandLine);

/// True when the program started. The command line is cut at 259 characters; null for none.
bool launchProgram(LPCWSTR program, LPCWSTR commandLine);

/// Both poll until the condition holds (true) or `timeout` milliseconds have passed (false).
bool waitForWindow(LPCWSTR className, LPCWSTR name, DWORD timeout);
bool waitForNoWindow(LPCWSTR className, LPCWSTR name, DWORD timeout);

/// Starts the program, or asks it to close, and waits for the window to appear or disappear.
bool launchAndWaitForStart(LPCWSTR program, LPCWSTR className, LPCWSTR windowName);
bool launchAndWaitForClose(LPCWSTR program, LPCWSTR className, LPCWSTR windowName);

}  // namespace qorv
