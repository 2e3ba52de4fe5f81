// The registry. Calls return their error code, not the last error.
#pragma once

#include "platform/types.h"

using HKEY = struct HKEY__*;
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::uintptr_t{0x80000002});

inline constexpr DWORD KEY_READ = 0x20019;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;

/// ERROR_FILE_NOT_FOUND when the key does not exist. The caller closes it with RegCloseKey.
extern "C" LONG RegOpenKeyExW(HKEY root, LPCWSTR path, DWORD options, DWORD access, HKEY* key)
    CE_CALL(RegOpenKeyExW);
/// *size: the buffer's bytes in, the value's bytes out. ERROR_MORE_DATA when the buffer is too small.
extern "C" LONG RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                                 DWORD* size) CE_CALL(RegQueryValueExW);
/// Makes the value when it is missing; a text's size includes its NUL.
extern "C" LONG RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                               DWORD size) CE_CALL(RegSetValueExW);
extern "C" LONG RegCloseKey(HKEY key) CE_CALL(RegCloseKey);
