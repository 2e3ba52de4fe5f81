// Last error, versions, memory, libraries and processes.
#pragma once

#include "platform/types.h"

struct SECURITY_ATTRIBUTES;
struct STARTUPINFOW;

struct OSVERSIONINFOW {
  DWORD dwOSVersionInfoSize;  ///< set by the caller
  DWORD dwMajorVersion;
  DWORD dwMinorVersion;
  DWORD dwBuildNumber;
  DWORD dwPlatformId;
  WCHAR szCSDVersion[128];
};
static_assert(sizeof(OSVERSIONINFOW) == 276);

struct PROCESS_INFORMATION {
  HANDLE hProcess;
  HANDLE hThread;
  DWORD dwProcessId;
  DWORD dwThreadId;
};
static_assert(kHasDeviceLayout<sizeof(PROCESS_INFORMATION), 16>);

inline constexpr DWORD DLL_PROCESS_DETACH = 0;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;

inline constexpr UINT LMEM_ZEROINIT = 0x40;
inline constexpr UINT LPTR = 0x40;

extern "C" DWORD GetLastError() CE_CALL(GetLastError);
extern "C" void SetLastError(DWORD error) CE_CALL(SetLastError);
extern "C" BOOL GetVersionExW(OSVERSIONINFOW* version) CE_CALL(GetVersionExW);

/// Null on failure; freed with LocalFree.
extern "C" HLOCAL LocalAlloc(UINT flags, UINT size) CE_CALL(LocalAlloc);
/// Null on success; the block itself when it is none.
extern "C" HLOCAL LocalFree(HLOCAL block) CE_CALL(LocalFree);
extern "C" HANDLE GetProcessHeap() CE_CALL(GetProcessHeap);
extern "C" void* HeapAlloc(HANDLE heap, DWORD flags, DWORD size) CE_CALL(HeapAlloc);
extern "C" BOOL HeapFree(HANDLE heap, DWORD flags, void* block) CE_CALL(HeapFree);

/// Null on failure; the caller gives it back with FreeLibrary.
extern "C" HMODULE LoadLibraryW(LPCWSTR name) CE_CALL(LoadLibraryW);
extern "C" BOOL FreeLibrary(HMODULE library) CE_CALL(FreeLibrary);
/// Null when the library has no such entry.
extern "C" FARPROC GetProcAddressW(HMODULE library, LPCWSTR name) CE_CALL(GetProcAddressW);
/// The characters copied, without the NUL; 0 on failure. A null module is the calling program.
extern "C" DWORD GetModuleFileNameW(HMODULE module, LPWSTR name, DWORD capacity) CE_CALL(GetModuleFileNameW);

/// The platform takes neither attributes, environment, directory nor start-up information: all null. The
/// caller closes both handles of *information.
extern "C" BOOL CreateProcessW(LPCWSTR program, LPCWSTR commandLine, SECURITY_ATTRIBUTES* processAttributes,
                               SECURITY_ATTRIBUTES* threadAttributes, BOOL inheritHandles, DWORD flags,
                               void* environment, LPWSTR directory, STARTUPINFOW* startup,
                               PROCESS_INFORMATION* information) CE_CALL(CreateProcessW);
