// Files, folders and searches. Paths are full: the platform has no current directory.
#pragma once

#include "platform/types.h"

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;

inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD OPEN_ALWAYS = 4;
inline constexpr DWORD TRUNCATE_EXISTING = 5;

inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 1;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 2;
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 4;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_FLAG_WRITE_THROUGH = 0x80000000;

inline constexpr DWORD FILE_BEGIN = 0;
inline constexpr DWORD FILE_CURRENT = 1;
inline constexpr DWORD FILE_END = 2;
inline constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFF;

struct WIN32_FIND_DATAW {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwOID;  ///< valid for files of the object store
  WCHAR cFileName[MAX_PATH];
};
static_assert(sizeof(WIN32_FIND_DATAW) == 560);

struct SECURITY_ATTRIBUTES;
struct OVERLAPPED;

/// INVALID_HANDLE_VALUE on failure. Open-always leaves ERROR_ALREADY_EXISTS when the file existed, any other
/// success 0. Share 0 makes later opens fail until the handle is closed with CloseHandle.
extern "C" HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                              DWORD disposition, DWORD attributes, HANDLE templateFile) CE_CALL(CreateFileW);
/// At or past the end it succeeds with 0 bytes.
extern "C" BOOL ReadFile(HANDLE file, void* buffer, DWORD count, DWORD* bytesRead, OVERLAPPED* overlapped)
    CE_CALL(ReadFile);
extern "C" BOOL WriteFile(HANDLE file, const void* buffer, DWORD count, DWORD* bytesWritten,
                          OVERLAPPED* overlapped) CE_CALL(WriteFile);
/// The new position's low word, or INVALID_SET_FILE_POINTER. Without `high` the distance is signed 32 bits.
extern "C" DWORD SetFilePointer(HANDLE file, LONG distance, LONG* high, DWORD method) CE_CALL(SetFilePointer);
extern "C" BOOL CloseHandle(HANDLE handle) CE_CALL(CloseHandle);
extern "C" BOOL DeleteFileW(LPCWSTR name) CE_CALL(DeleteFileW);
extern "C" DWORD GetFileAttributesW(LPCWSTR name) CE_CALL(GetFileAttributesW);
/// INVALID_HANDLE_VALUE with ERROR_NO_MORE_FILES when nothing matches. The caller closes it with FindClose.
extern "C" HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data) CE_CALL(FindFirstFileW);
extern "C" BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* data) CE_CALL(FindNextFileW);
extern "C" BOOL FindClose(HANDLE search) CE_CALL(FindClose);
/// The length without NUL, 0 on failure; the path ends with a backslash.
extern "C" DWORD GetTempPathW(DWORD capacity, LPWSTR path) CE_CALL(GetTempPathW);
/// With `unique` 0 the file is created. The number in the name, 0 on failure. `name` has MAX_PATH characters.
extern "C" UINT GetTempFileNameW(LPCWSTR path, LPCWSTR prefix, UINT unique, LPWSTR name)
    CE_CALL(GetTempFileNameW);
