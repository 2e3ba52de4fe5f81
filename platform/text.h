// Text conversion, comparison and debugger output.
#pragma once

// Takes the address of the C library's wcstol, so it has to be read before there is a second one.
#include <string>

#include "platform/types.h"

inline constexpr UINT CP_ACP = 0;

/// The bytes written, or needed when `capacity` is 0; 0 on failure, ERROR_INSUFFICIENT_BUFFER when it is too
/// small. A count of -1 converts the NUL-terminated text with its NUL.
extern "C" int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int count, char* bytes,
                                   int capacity, const char* defaultChar, BOOL* usedDefaultChar)
    CE_CALL(WideCharToMultiByte);
extern "C" void OutputDebugStringW(LPCWSTR text) CE_CALL(OutputDebugStringW);

/// Without regard to case: negative, 0 or positive.
extern "C" int _wcsicmp(LPCWSTR left, LPCWSTR right) CE_CALL(_wcsicmp);
extern "C" int _memicmp(const void* left, const void* right, UINT count) CE_CALL(_memicmp);
/// White space, a sign and digits; *end is the first character after them. An overload, not C linkage: the C
/// library has a function of this name for its own wide character.
LONG wcstol(LPCWSTR text, WCHAR** end, int base) CE_CALL(wcstol);
