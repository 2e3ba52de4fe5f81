// "registry": keys by their full path, each with its values. A number is REG_DWORD, a text REG_SZ, and
// {"type": NUMBER, "data": base64} is any value as the platform stores it; null removes the value.
#include <array>
#include <limits>

#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

constexpr const char* kTypeKey = "type";
constexpr const char* kDataKey = "data";

constexpr std::array kValueFields{
    Field<RegistryValue>{kTypeKey,
                         [](RegistryValue& value, const JsonNode& node) {
                           value.type = static_cast<DWORD>(node.number(0, std::numeric_limits<DWORD>::max()));
                         }},
    Field<RegistryValue>{kDataKey,
                         [](RegistryValue& value, const JsonNode& node) { value.data = readBytes(node); }},
};

RegistryValue readValue(const std::u16string& name, const JsonNode& node) {
  if (node.isNumber()) {
    return numberValue(name, static_cast<DWORD>(node.number(0, std::numeric_limits<DWORD>::max())));
  }
  if (node.isText()) return textValue(name, toUtf16(node.text()));
  if (!node.isObject()) node.refuse("expected a text, a number, or an object with type and data");
  RegistryValue value{name, 0, {}};
  requireMember(node, kTypeKey);
  readFields<RegistryValue>(node, kValueFields, value);
  return value;
}

/// The short form when it says all of the value.
Json valueToJson(const RegistryValue& value) {
  if (const auto number = numberOf(value)) return *number;
  const auto text = textOf(value);
  if (text && textValue(value.name, *text).data == value.data && toUtf16(toUtf8(*text)) == *text) {
    return toUtf8(*text);
  }
  return Json::object({{kTypeKey, value.type}, {kDataKey, bytesToJson(value.data)}});
}

/// A key without values is there anyway when one below it is.
bool isSaidByNext(const std::vector<RegistryKey>& keys, std::size_t index) {
  return keys[index].values.empty() && index + 1 < keys.size() &&
         keys[index + 1].path.starts_with(keys[index].path + u'\\');
}

}  // namespace

void loadRegistry(Device& device, const JsonNode& node) {
  node.forEachMember([&device](std::string_view keyText, const JsonNode& values) {
    const std::u16string path = toUtf16(keyText);
    if (!device.registry.makeKey(path)) {
      values.refuse(
          "no registry key: a path is HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_CLASSES_ROOT or "
          "HKEY_USERS, and names after backslashes");
    }
    values.forEachMember([&](std::string_view nameText, const JsonNode& value) {
      const std::u16string name = toUtf16(nameText);
      if (value.isNull()) {
        device.registry.remove(path, name);
      } else {
        device.registry.put(path, readValue(name, value));
      }
    });
  });
}

Json dumpRegistry(Device& device) {
  Json registry = Json::object();
  const std::vector<RegistryKey> keys = device.registry.contents();
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (isSaidByNext(keys, i)) continue;
    Json& values = registry[toUtf8(keys[i].path)] = Json::object();
    for (const RegistryValue& value : keys[i].values) values[toUtf8(value.name)] = valueToJson(value);
  }
  return registry;
}

}  // namespace emulator
