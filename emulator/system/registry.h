// The device's registry: keys and values by names without regard to case, kept as first spelled.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "emulator/store/sqlite.h"
#include "emulator/system/handle_table.h"
#include "platform/registry.h"

namespace emulator {

struct RegistryValue {
  std::u16string name;
  DWORD type = 0;
  Bytes data;  ///< as the platform stores it: texts with their NUL, numbers with the low byte first
};

struct RegistryKey {
  std::u16string path;  ///< from the predefined key's name on: "HKEY_LOCAL_MACHINE\SOFTWARE"
  std::vector<RegistryValue> values;
};

/// The calls return their error number, as the platform's do, and leave the last error alone.
class Registry {
 public:
  Registry(Connection& connection, HandleTable& handles) : connection_(connection), handles_(handles) {}

  /// Opens a key below a predefined or an open one. ERROR_FILE_NOT_FOUND when it does not exist,
  /// ERROR_INVALID_HANDLE for a root that is neither; *key is set on success only.
  LONG openKey(HKEY root, std::u16string_view path, HKEY* key);
  /// `type` and `data` may be null. *size: the buffer's bytes in, the value's out. Without a buffer the size
  /// alone is told; a buffer that is too small is not touched and gives ERROR_MORE_DATA.
  LONG queryValue(HKEY key, std::u16string_view name, DWORD* type, BYTE* data, DWORD* size);
  /// Makes the value when it is missing.
  LONG setValue(HKEY key, std::u16string_view name, DWORD type, ByteView data);
  /// A predefined key may be closed and stays.
  LONG closeKey(HKEY key);

  /// For the device's keeper: sets a value of the key with that full path and makes the keys that are
  /// missing. False when the path does not begin with a predefined key's name or has an empty part.
  bool put(std::u16string_view path, const RegistryValue& value);
  /// Removes a value, if it is there. False as for `put`.
  bool remove(std::u16string_view path, std::u16string_view name);
  /// What a key is called in the device file. Good until the work that made the key is undone.
  using KeyId = std::int64_t;
  /// Makes the key alone. Nothing where `put` is false.
  std::optional<KeyId> makeKey(std::u16string_view path);
  void put(KeyId key, const RegistryValue& value);
  std::optional<RegistryValue> get(KeyId key, std::u16string_view name);
  /// The value of a key by its full path.
  std::optional<RegistryValue> get(std::u16string_view path, std::u16string_view name);
  /// Every key but the predefined ones that hold no value, a key before those below it, in the order of the
  /// folded names; the values likewise.
  std::vector<RegistryKey> contents();

 private:
  std::optional<KeyId> idOf(HKEY key) const;
  std::optional<KeyId> child(KeyId parent, std::u16string_view name);
  std::optional<KeyId> descend(KeyId from, std::u16string_view path);
  KeyId makeChild(KeyId parent, std::u16string_view name);
  std::vector<RegistryValue> valuesOf(KeyId key);
  void collect(KeyId parent, const std::u16string& path, std::vector<RegistryKey>& keys);

  Connection& connection_;
  HandleTable& handles_;
};

/// A REG_SZ and a REG_DWORD value.
RegistryValue textValue(std::u16string_view name, std::u16string_view text);
RegistryValue numberValue(std::u16string_view name, DWORD number);
/// What such a value holds, a text without its NUL; nothing for a value of another type.
std::optional<std::u16string> textOf(const RegistryValue& value);
std::optional<DWORD> numberOf(const RegistryValue& value);

}  // namespace emulator
