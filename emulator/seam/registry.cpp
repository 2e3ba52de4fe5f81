#include "platform/registry.h"

#include "emulator/seam/call.h"

using emulator::ByteView;
using emulator::call;
using emulator::Device;
using emulator::textOf;

LONG RegOpenKeyExW(HKEY root, LPCWSTR path, DWORD options, DWORD access, HKEY* key) {
  return call<&::RegOpenKeyExW>(
      [&](Device& device) { return device.registry.openKey(root, textOf(path), key); }, root, path, options,
      access, key);
}

LONG RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) {
  return call<&::RegQueryValueExW>(
      [&](Device& device) { return device.registry.queryValue(key, textOf(name), type, data, size); }, key,
      name, reserved, type, data, size);
}

LONG RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
  return call<&::RegSetValueExW>(
      [&](Device& device) { return device.registry.setValue(key, textOf(name), type, ByteView(data, size)); },
      key, name, reserved, type, data, size);
}

LONG RegCloseKey(HKEY key) {
  return call<&::RegCloseKey>([&](Device& device) { return device.registry.closeKey(key); }, key);
}
