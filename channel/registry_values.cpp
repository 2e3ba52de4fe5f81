#include "channel/registry_values.h"

#include <vector>

#include "platform/errors.h"

namespace qorv {

namespace {

constexpr DWORD kReadWriteAccess = 0x2001F;

class RegistryKey {
 public:
  RegistryKey(HKEY root, LPCWSTR path, DWORD access) {
    if (RegOpenKeyExW(root, path, 0, access, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey() {
    if (key_) RegCloseKey(key_);
  }

  bool query(LPCWSTR name, void* data, DWORD& size) const {
    return key_ &&
           RegQueryValueExW(key_, name, nullptr, nullptr, static_cast<BYTE*>(data), &size) == ERROR_SUCCESS;
  }
  bool set(LPCWSTR name, DWORD type, const void* data, DWORD size) const {
    return key_ && RegSetValueExW(key_, name, 0, type, static_cast<const BYTE*>(data), size) == ERROR_SUCCESS;
  }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

bool readRegistryDword(HKEY root, LPCWSTR path, LPCWSTR name, DWORD& value) {
  value = 0;
  DWORD size = sizeof(value);
  const bool read = RegistryKey(root, path, KEY_READ).query(name, &value, size);
  if (!read) value = 0;
  return read;
}

bool writeRegistryDword(HKEY root, LPCWSTR path, LPCWSTR name, DWORD value) {
  return RegistryKey(root, path, kReadWriteAccess).set(name, REG_DWORD, &value, sizeof(value));
}

bool readRegistryText(HKEY root, LPCWSTR path, LPCWSTR name, DWORD capacity, std::u16string& value) {
  value.clear();
  // One character more than the platform may fill: a stored text need not end with a NUL.
  std::vector<WCHAR> buffer(capacity / sizeof(WCHAR) + 1);
  DWORD size = capacity;
  if (!RegistryKey(root, path, KEY_READ).query(name, buffer.data(), size)) return false;
  value = buffer.data();
  return true;
}

bool writeRegistryText(HKEY root, LPCWSTR path, LPCWSTR name, const std::u16string& value) {
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(WCHAR));
  return RegistryKey(root, path, kReadWriteAccess).set(name, REG_SZ, value.c_str(), size);
}

}  // namespace qorv
