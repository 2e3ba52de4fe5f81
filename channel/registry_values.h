// Reads and writes single registry values of existing keys.
#pragma once

#include <string>

#include "platform/registry.h"

namespace qorv {

/// Each opens an existing key, does one thing, closes the key, and is true only when every step succeeded.
/// None makes a key. A failed read leaves 0 or the empty text.
bool readRegistryDword(HKEY root, LPCWSTR path, LPCWSTR name, DWORD& value);
bool writeRegistryDword(HKEY root, LPCWSTR path, LPCWSTR name, DWORD value);
/// A value of more than `capacity` bytes, its NUL included, is a failure.
bool readRegistryText(HKEY root, LPCWSTR path, LPCWSTR name, DWORD capacity, std::u16string& value);
bool writeRegistryText(HKEY root, LPCWSTR path, LPCWSTR name, const std::u16string& value);

}  // namespace qorv
