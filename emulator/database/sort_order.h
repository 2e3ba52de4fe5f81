// The sort orders of a property database, and the keys under which records stand in them.
#pragma once

#include <span>
#include <vector>

#include "emulator/database/record_property.h"

namespace emulator {

struct SortProperty {
  CEPROPID id = 0;
  DWORD flags = 0;  ///< CEDB_SORT_*
};

struct SortOrder {
  std::int64_t id = 0;  ///< the device file's number of it; 0 before it is stored
  WORD keyFlags = 0;    ///< CEDB_SORT_UNIQUE for all its properties together
  std::vector<SortProperty> properties{};

  /// Whether no other record may have the record's key: records that lack a property are never alike.
  bool isUniqueFor(const RecordProperties& record) const;
  /// Whether a record with these properties may stand in the order.
  bool takes(const RecordProperties& record) const;
};

/// Whether the properties are the order's, whatever the flags.
bool hasProperties(const SortOrder& order, std::span<const CEPROPID> ids);

/// A record's key. Keys compare bytewise as the order goes: records that lack a property come last, or first
/// with CEDB_SORT_UNKNOWNFIRST, in either direction. Texts go by their UTF-16 units, by the folded ones with
/// CEDB_SORT_CASEINSENSITIVE.
Bytes sortKey(const SortOrder& order, const RecordProperties& record);

/// What the keys of the records begin with that have the value as the order's first property.
Bytes sortKeyOfValue(const SortProperty& property, ByteView data);
/// The least key that is greater than all that begin so.
Bytes keyPast(Bytes prefix);
/// No record that has the order's first property has a key below.
Bytes leastKnownKey();

}  // namespace emulator
