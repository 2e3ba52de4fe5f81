#include "emulator/database/database_description.h"

#include <algorithm>

namespace emulator {
namespace {

constexpr WORD kVersion = 1;
constexpr DWORD kEverythingIsValid =
    CEDB_VALIDNAME | CEDB_VALIDTYPE | CEDB_VALIDSORTSPEC | CEDB_VALIDMODTIME | CEDB_VALIDDBFLAGS;
constexpr DWORD kDatabaseFlags = CEDB_NOCOMPRESS | CEDB_SYSTEMDB;

/// A name that fills its field has no NUL.
std::u16string nameIn(const WCHAR (&field)[CEDB_MAXDBASENAMELEN]) {
  return {std::begin(field), std::ranges::find(field, u'\0')};
}

bool isSortable(CEPROPID id) {
  return isRecordType(typeOf(id)) && typeOf(id) != CEVT_BLOB;
}

std::optional<std::vector<SortOrder>> ordersOf(std::span<const SORTORDERSPECEX> given) {
  std::vector<SortOrder> orders;
  for (const SORTORDERSPECEX& spec : given) {
    auto order = orderOf(spec);
    if (!order) return std::nullopt;
    orders.push_back(std::move(*order));
  }
  return orders;
}

SORTORDERSPECEX specOf(const SortOrder& order) {
  SORTORDERSPECEX spec{};
  spec.wVersion = kVersion;
  spec.wNumProps = static_cast<WORD>(order.properties.size());
  spec.wKeyFlags = order.keyFlags;
  for (std::size_t place = 0; place < order.properties.size(); ++place) {
    spec.rgPropID[place] = order.properties[place].id;
    spec.rgdwFlags[place] = order.properties[place].flags;
  }
  return spec;
}

}  // namespace

bool isObjectStore(const CEGUID* volume) {
  return volume != nullptr && (*volume == kSystemVolume || *volume == kInvalidVolume);
}

bool isDatabaseName(std::u16string_view name) {
  return !name.empty() && name.size() <= CEDB_MAXDBASENAMELEN && name.back() != u'\\';
}

std::optional<SortOrder> orderOf(const SORTORDERSPECEX& given) {
  if (given.wVersion != kVersion || given.wNumProps == 0 || given.wNumProps > CEDB_MAXSORTPROP) {
    return std::nullopt;
  }
  SortOrder order{.keyFlags = given.wKeyFlags};
  for (std::size_t place = 0; place < given.wNumProps; ++place) {
    if (!isSortable(given.rgPropID[place])) return std::nullopt;
    order.properties.push_back({given.rgPropID[place], given.rgdwFlags[place]});
  }
  return order;
}

std::optional<std::vector<SortOrder>> ordersOf(std::span<const SORTORDERSPEC> given) {
  if (given.size() > CEDB_MAXSORTORDER) return std::nullopt;
  std::vector<SortOrder> orders;
  for (const SORTORDERSPEC& spec : given) {
    if (!isSortable(spec.propid)) return std::nullopt;
    orders.push_back({.properties = {{spec.propid, spec.dwFlags}}});
  }
  return orders;
}

std::optional<PropertyDatabase> databaseOf(const CEDBASEINFOEX& given) {
  const auto isValid = [&](DWORD flag) { return (given.dwFlags & flag) != 0; };
  if (given.wVersion != kVersion || !isValid(CEDB_VALIDNAME)) return std::nullopt;
  PropertyDatabase database;
  database.name = nameIn(given.szDbaseName);
  if (!isDatabaseName(database.name)) return std::nullopt;
  if (isValid(CEDB_VALIDTYPE)) database.type = given.dwDbaseType;
  if (isValid(CEDB_VALIDDBFLAGS)) database.flags = given.dwFlags & kDatabaseFlags;
  if (!isValid(CEDB_VALIDSORTSPEC)) return database;
  if (given.wNumSortOrder > CEDB_MAXSORTORDER) return std::nullopt;
  auto orders = ordersOf(std::span(given.rgSortSpecs).first(given.wNumSortOrder));
  if (!orders) return std::nullopt;
  database.orders = std::move(*orders);
  return database;
}

CEDBASEINFOEX describe(const PropertyDatabase& database, const DatabaseState& state) {
  CEDBASEINFOEX description{};
  description.wVersion = kVersion;
  description.wNumSortOrder = static_cast<WORD>(database.orders.size());
  description.dwFlags = kEverythingIsValid | database.flags;
  std::ranges::copy(database.name, description.szDbaseName);
  description.dwDbaseType = database.type;
  description.dwNumRecords = state.records;
  description.dwSize = state.bytes;
  description.ftLastModified = fileTimeOf(state.modified);
  std::ranges::transform(database.orders, description.rgSortSpecs, specOf);
  return description;
}

}  // namespace emulator
