#include "platform/files.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::ClosableObject;
using emulator::Device;
using emulator::textOf;

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD attributes, HANDLE templateFile) {
  return call<&::CreateFileW>(
      [&](Device& device) {
        return device.files.createFile(textOf(name), access, share, disposition, attributes);
      },
      name, access, share, security, disposition, attributes, templateFile);
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD count, DWORD* bytesRead, OVERLAPPED* overlapped) {
  return call<&::ReadFile>(
      [&](Device& device) { return device.files.readFile(file, buffer, count, bytesRead); }, file, buffer,
      count, bytesRead, overlapped);
}

BOOL WriteFile(HANDLE file, const void* buffer, DWORD count, DWORD* bytesWritten, OVERLAPPED* overlapped) {
  return call<&::WriteFile>(
      [&](Device& device) { return device.files.writeFile(file, buffer, count, bytesWritten); }, file, buffer,
      count, bytesWritten, overlapped);
}

DWORD SetFilePointer(HANDLE file, LONG distance, LONG* high, DWORD method) {
  return call<&::SetFilePointer>(
      [&](Device& device) { return device.files.setFilePointer(file, distance, high, method); }, file,
      distance, high, method);
}

BOOL CloseHandle(HANDLE handle) {
  return call<&::CloseHandle>(
      [&](Device& device) {
        return device.handles.close<ClosableObject>(handle) || device.lastError.fail(ERROR_INVALID_HANDLE);
      },
      handle);
}

BOOL DeleteFileW(LPCWSTR name) {
  return call<&::DeleteFileW>([&](Device& device) { return device.files.deleteFile(textOf(name)); }, name);
}

DWORD GetFileAttributesW(LPCWSTR name) {
  return call<&::GetFileAttributesW>(
      [&](Device& device) { return device.files.fileAttributes(textOf(name)); }, name);
}

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data) {
  return call<&::FindFirstFileW>(
      [&](Device& device) { return device.searches.findFirst(textOf(pattern), data); }, pattern, data);
}

BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* data) {
  return call<&::FindNextFileW>([&](Device& device) { return device.searches.findNext(search, data); },
                                search, data);
}

BOOL FindClose(HANDLE search) {
  return call<&::FindClose>([&](Device& device) { return device.searches.close(search); }, search);
}

DWORD GetTempPathW(DWORD capacity, LPWSTR path) {
  return call<&::GetTempPathW>([&](Device& device) { return device.tempFiles.tempPath(capacity, path); },
                               capacity, path);
}

UINT GetTempFileNameW(LPCWSTR path, LPCWSTR prefix, UINT unique, LPWSTR name) {
  return call<&::GetTempFileNameW>(
      [&](Device& device) {
        return device.tempFiles.tempFileName(textOf(path), textOf(prefix), unique, name);
      },
      path, prefix, unique, name);
}
