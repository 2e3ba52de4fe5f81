// The platform's result codes and last-error numbers.
#pragma once

#include "platform/types.h"

constexpr bool SUCCEEDED(HRESULT result) {
  return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
  return result < 0;
}

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;

namespace platform_detail {
constexpr HRESULT failure(DWORD bits) {
  return static_cast<HRESULT>(bits);
}
}  // namespace platform_detail

inline constexpr HRESULT E_NOTIMPL = platform_detail::failure(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = platform_detail::failure(0x80004002);
inline constexpr HRESULT E_POINTER = platform_detail::failure(0x80004003);
inline constexpr HRESULT E_FAIL = platform_detail::failure(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = platform_detail::failure(0x8000FFFF);
inline constexpr HRESULT E_OUTOFMEMORY = platform_detail::failure(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = platform_detail::failure(0x80070057);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = platform_detail::failure(0x80040154);
inline constexpr HRESULT RPC_E_CHANGED_MODE = platform_detail::failure(0x80010106);
inline constexpr HRESULT STG_E_INVALIDFUNCTION = platform_detail::failure(0x80030001);
inline constexpr HRESULT STG_E_ACCESSDENIED = platform_detail::failure(0x80030005);

// The object model's own failures.
inline constexpr HRESULT E_FIELDTOOLARGE = platform_detail::failure(0x80040066);
inline constexpr HRESULT E_INVALIDREMINDERTIME = platform_detail::failure(0x80040067);
inline constexpr HRESULT E_INVALIDDATES = platform_detail::failure(0x80040068);
inline constexpr HRESULT E_ALLDAYMEETING = platform_detail::failure(0x80040069);
inline constexpr HRESULT E_OVERLAPPINGEXCEPTION = platform_detail::failure(0x8004006A);
inline constexpr HRESULT E_CANTCHANGEDATE = platform_detail::failure(0x8004006B);
inline constexpr HRESULT E_EXCEPTIONSAMEDAY = platform_detail::failure(0x8004006C);

// Messaging.
inline constexpr HRESULT MAPI_W_ERRORS_RETURNED = 0x00040380;
inline constexpr HRESULT MAPI_W_PARTIAL_COMPLETION = 0x00040680;
inline constexpr HRESULT MAPI_E_NO_SUPPORT = platform_detail::failure(0x80040102);
inline constexpr HRESULT MAPI_E_UNKNOWN_FLAGS = platform_detail::failure(0x80040106);
inline constexpr HRESULT MAPI_E_INVALID_ENTRYID = platform_detail::failure(0x80040107);
inline constexpr HRESULT MAPI_E_BUSY = platform_detail::failure(0x8004010B);
inline constexpr HRESULT MAPI_E_NOT_FOUND = platform_detail::failure(0x8004010F);
inline constexpr HRESULT MAPI_E_NO_ACCESS = platform_detail::failure(0x80070005);
inline constexpr HRESULT MAPI_E_TIMEOUT = platform_detail::failure(0x80040401);
inline constexpr HRESULT MAPI_E_CALL_FAILED = E_FAIL;
inline constexpr HRESULT MAPI_E_NOT_ENOUGH_MEMORY = E_OUTOFMEMORY;

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_DBPROP_NOT_FOUND = ERROR_ACCESS_DENIED;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_INVALID_DATA = 13;
inline constexpr DWORD ERROR_OUTOFMEMORY = 14;
inline constexpr DWORD ERROR_NO_MORE_FILES = 18;
inline constexpr DWORD ERROR_WRITE_PROTECT = 19;
inline constexpr DWORD ERROR_SHARING_VIOLATION = 32;
inline constexpr DWORD ERROR_HANDLE_EOF = 38;
inline constexpr DWORD ERROR_NOT_SUPPORTED = 50;
inline constexpr DWORD ERROR_DUP_NAME = 52;
inline constexpr DWORD ERROR_FILE_EXISTS = 80;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_CALL_NOT_IMPLEMENTED = 120;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_INVALID_NAME = 123;
inline constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
inline constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
inline constexpr DWORD ERROR_NEGATIVE_SEEK = 131;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline constexpr DWORD ERROR_REPEATED_KEY = ERROR_ALREADY_EXISTS;
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_NO_DATA = 232;
inline constexpr DWORD ERROR_MORE_DATA = 234;
inline constexpr DWORD ERROR_NO_MORE_ITEMS = 259;
inline constexpr DWORD ERROR_KEY_DELETED = 1018;
inline constexpr DWORD ERROR_NO_UNICODE_TRANSLATION = 1113;
inline constexpr DWORD ERROR_NOT_FOUND = 1168;
inline constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
inline constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;
inline constexpr DWORD ERROR_CLASS_ALREADY_EXISTS = 1410;
