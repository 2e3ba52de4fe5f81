#include "platform/system.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;
using emulator::textOf;

DWORD GetLastError() {
  return call<&::GetLastError>([](Device& device) { return device.lastError.value(); });
}

void SetLastError(DWORD error) {
  call<&::SetLastError>([&](Device& device) { device.lastError.set(error); }, error);
}

BOOL GetVersionExW(OSVERSIONINFOW* version) {
  return call<&::GetVersionExW>(
      [&](Device& device) {
        return emulator::describe(device.configuration.osVersion(), version) ||
               device.lastError.fail(ERROR_INSUFFICIENT_BUFFER);
      },
      version);
}

HMODULE LoadLibraryW(LPCWSTR name) {
  return call<&::LoadLibraryW>([&](Device& device) { return device.modules.load(textOf(name)); }, name);
}

BOOL FreeLibrary(HMODULE library) {
  return call<&::FreeLibrary>([&](Device& device) { return device.modules.unload(library); }, library);
}

FARPROC GetProcAddressW(HMODULE library, LPCWSTR name) {
  return call<&::GetProcAddressW>([&](Device& device) { return device.modules.entry(library, textOf(name)); },
                                  library, name);
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR name, DWORD capacity) {
  return call<&::GetModuleFileNameW>(
      [&](Device& device) { return device.modules.fileName(module, name, capacity); }, module, name,
      capacity);
}

BOOL CreateProcessW(LPCWSTR program, LPCWSTR commandLine, SECURITY_ATTRIBUTES* processAttributes,
                    SECURITY_ATTRIBUTES* threadAttributes, BOOL inheritHandles, DWORD flags,
                    void* environment, LPWSTR directory, STARTUPINFOW* startup,
                    PROCESS_INFORMATION* information) {
  return call<&::CreateProcessW>(
      [&](Device& device) {
        return device.processes.create(textOf(program), textOf(commandLine), information);
      },
      program, commandLine, processAttributes, threadAttributes, inheritHandles, flags, environment,
      directory, startup, information);
}
