// A database's name, type and sort orders as programs give and get them.
#pragma once

#include <span>

#include "emulator/database/database_catalog.h"

namespace emulator {

/// Whether a call means the object store, the only volume: by its own identifier or by the one of any volume.
bool isObjectStore(const CEGUID* volume);

/// Whether a database can be called so: 1 to 32 characters, no backslash at the end.
bool isDatabaseName(std::u16string_view name);

/// Nothing for a property that records can't be sorted by, or more keys than the platform allows.
std::optional<SortOrder> orderOf(const SORTORDERSPECEX& given);
std::optional<std::vector<SortOrder>> ordersOf(std::span<const SORTORDERSPEC> given);
/// Of a description only what its flags call valid counts. Nothing when it has no name or something is wrong.
std::optional<PropertyDatabase> databaseOf(const CEDBASEINFOEX& given);

CEDBASEINFOEX describe(const PropertyDatabase& database, const DatabaseState& state);

}  // namespace emulator
