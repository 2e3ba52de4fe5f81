#include "emulator/system/registry.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "emulator/system/case_fold.h"
#include "platform/errors.h"

namespace emulator {
namespace {

constexpr std::uintptr_t kFirstPredefined = 0x80000000;
constexpr std::int64_t kPredefinedKeys = 4;  ///< Their rows are numbered from 1.
constexpr std::int64_t kTop = 0;

constexpr LONG result(DWORD error) {
  return static_cast<LONG>(error);
}

class OpenKey : public KernelObject {
 public:
  explicit OpenKey(std::int64_t id) : id_(id) {}
  std::int64_t id() const { return id_; }

 private:
  std::int64_t id_;
};

std::optional<std::int64_t> predefined(HKEY key) {
  const auto value = reinterpret_cast<std::uintptr_t>(key);
  if (value < kFirstPredefined || value >= kFirstPredefined + kPredefinedKeys) return std::nullopt;
  return static_cast<std::int64_t>(value - kFirstPredefined) + 1;
}

/// Takes the part before the first backslash off the path, with the backslash.
std::u16string_view takePart(std::u16string_view& path) {
  const std::size_t length = std::min(path.find(u'\\'), path.size());
  const std::u16string_view part = path.substr(0, length);
  path.remove_prefix(std::min(length + 1, path.size()));
  return part;
}

bool hasEmptyPart(std::u16string_view path) {
  return path.empty() || path.front() == u'\\' || path.back() == u'\\' ||
         path.find(u"\\\\") != std::u16string_view::npos;
}

}  // namespace

LONG Registry::openKey(HKEY root, std::u16string_view path, HKEY* key) {
  const auto from = idOf(root);
  if (!from) return result(ERROR_INVALID_HANDLE);
  const auto id = descend(*from, path);
  if (!id) return result(ERROR_FILE_NOT_FOUND);
  *key = handles_.add<HKEY>(std::make_unique<OpenKey>(*id));
  return result(ERROR_SUCCESS);
}

LONG Registry::queryValue(HKEY key, std::u16string_view name, DWORD* type, BYTE* data, DWORD* size) {
  const auto id = idOf(key);
  if (!id) return result(ERROR_INVALID_HANDLE);
  if (data != nullptr && size == nullptr) return result(ERROR_INVALID_PARAMETER);
  const auto value = get(*id, name);
  if (!value) return result(ERROR_FILE_NOT_FOUND);
  if (type != nullptr) *type = value->type;
  if (size == nullptr) return result(ERROR_SUCCESS);
  const DWORD room = std::exchange(*size, static_cast<DWORD>(value->data.size()));
  if (data == nullptr) return result(ERROR_SUCCESS);
  if (room < value->data.size()) return result(ERROR_MORE_DATA);
  std::ranges::copy(value->data, data);
  return result(ERROR_SUCCESS);
}

LONG Registry::setValue(HKEY key, std::u16string_view name, DWORD type, ByteView data) {
  const auto id = idOf(key);
  if (!id) return result(ERROR_INVALID_HANDLE);
  put(*id, {std::u16string(name), type, Bytes(data.begin(), data.end())});
  return result(ERROR_SUCCESS);
}

LONG Registry::closeKey(HKEY key) {
  if (predefined(key) || handles_.close<OpenKey>(key)) return result(ERROR_SUCCESS);
  return result(ERROR_INVALID_HANDLE);
}

bool Registry::put(std::u16string_view path, const RegistryValue& value) {
  const auto key = makeKey(path);
  if (key) put(*key, value);
  return key.has_value();
}

bool Registry::remove(std::u16string_view path, std::u16string_view name) {
  const auto key = makeKey(path);
  if (key) connection_.run("DELETE FROM registry_value WHERE key = ? AND folded = ?", *key, foldCase(name));
  return key.has_value();
}

std::optional<RegistryValue> Registry::get(std::u16string_view path, std::u16string_view name) {
  const auto key = descend(kTop, path);
  return key ? get(*key, name) : std::nullopt;
}

std::vector<RegistryKey> Registry::contents() {
  std::vector<RegistryKey> keys;
  collect(kTop, u"", keys);
  return keys;
}

std::optional<Registry::KeyId> Registry::idOf(HKEY key) const {
  if (const auto id = predefined(key)) return id;
  const OpenKey* open = handles_.find<OpenKey>(key);
  return open == nullptr ? std::nullopt : std::optional(open->id());
}

std::optional<Registry::KeyId> Registry::child(KeyId parent, std::u16string_view name) {
  Cursor row = connection_.query("SELECT id FROM registry_key WHERE parent = ? AND folded = ?", parent,
                                 foldCase(name));
  if (!row.next()) return std::nullopt;
  return row.get<KeyId>(0);
}

std::optional<Registry::KeyId> Registry::descend(KeyId from, std::u16string_view path) {
  std::optional<KeyId> key = from;
  while (key && !path.empty()) key = child(*key, takePart(path));
  return key;
}

std::optional<Registry::KeyId> Registry::makeKey(std::u16string_view path) {
  if (hasEmptyPart(path)) return std::nullopt;
  const auto root = child(kTop, takePart(path));
  if (!root) return std::nullopt;
  KeyId key = *root;
  while (!path.empty()) {
    const std::u16string_view name = takePart(path);
    const auto existing = child(key, name);
    key = existing ? *existing : makeChild(key, name);
  }
  return key;
}

Registry::KeyId Registry::makeChild(KeyId parent, std::u16string_view name) {
  Cursor row =
      connection_.query("INSERT INTO registry_key (parent, name, folded) VALUES (?, ?, ?) RETURNING id",
                        parent, name, foldCase(name));
  row.next();
  return row.get<KeyId>(0);
}

std::optional<RegistryValue> Registry::get(KeyId key, std::u16string_view name) {
  Cursor row = connection_.query("SELECT name, type, data FROM registry_value WHERE key = ? AND folded = ?",
                                 key, foldCase(name));
  if (!row.next()) return std::nullopt;
  return RegistryValue{row.get<std::u16string>(0), row.get<DWORD>(1), row.get<Bytes>(2)};
}

void Registry::put(KeyId key, const RegistryValue& value) {
  connection_.run(
      "INSERT INTO registry_value (key, name, folded, type, data) VALUES (?, ?, ?, ?, ?)"
      " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data",
      key, value.name, foldCase(value.name), value.type, value.data);
}

std::vector<RegistryValue> Registry::valuesOf(KeyId key) {
  std::vector<RegistryValue> values;
  Cursor row = connection_.query("SELECT name, type, data FROM registry_value WHERE key = ?", key);
  while (row.next()) values.push_back({row.get<std::u16string>(0), row.get<DWORD>(1), row.get<Bytes>(2)});
  std::ranges::sort(values, {}, [](const RegistryValue& value) { return foldCase(value.name); });
  return values;
}

void Registry::collect(KeyId parent, const std::u16string& path, std::vector<RegistryKey>& keys) {
  std::vector<std::pair<std::u16string, KeyId>> children;
  Cursor row = connection_.query("SELECT name, id FROM registry_key WHERE parent = ?", parent);
  while (row.next()) children.emplace_back(row.get<std::u16string>(0), row.get<KeyId>(1));
  std::ranges::sort(children, {}, [](const auto& child) { return foldCase(child.first); });
  for (const auto& [name, id] : children) {
    std::u16string childPath = path;
    if (parent != kTop) childPath += u'\\';
    childPath += name;
    auto values = valuesOf(id);
    if (parent != kTop || !values.empty()) keys.push_back({childPath, std::move(values)});
    collect(id, childPath, keys);
  }
}

RegistryValue textValue(std::u16string_view name, std::u16string_view text) {
  RegistryValue value{std::u16string(name), REG_SZ, Bytes((text.size() + 1) * sizeof(WCHAR))};
  if (!text.empty()) std::memcpy(value.data.data(), text.data(), text.size() * sizeof(WCHAR));
  return value;
}

RegistryValue numberValue(std::u16string_view name, DWORD number) {
  RegistryValue value{std::u16string(name), REG_DWORD, Bytes(sizeof number)};
  std::memcpy(value.data.data(), &number, sizeof number);
  return value;
}

std::optional<std::u16string> textOf(const RegistryValue& value) {
  if (value.type != REG_SZ) return std::nullopt;
  std::u16string text(value.data.size() / sizeof(WCHAR), u'\0');
  if (!text.empty()) std::memcpy(text.data(), value.data.data(), text.size() * sizeof(WCHAR));
  return text.substr(0, text.find(u'\0'));
}

std::optional<DWORD> numberOf(const RegistryValue& value) {
  DWORD number = 0;
  if (value.type != REG_DWORD || value.data.size() != sizeof number) return std::nullopt;
  std::memcpy(&number, value.data.data(), sizeof number);
  return number;
}

}  // namespace emulator
