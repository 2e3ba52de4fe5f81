#include "emulator/database/property_databases.h"

#include <algorithm>

#include "emulator/database/open_database.h"
#include "platform/errors.h"

namespace emulator {
namespace {

/// What the structure takes on the device, whatever it takes here.
constexpr DWORD kNotifyRequestBytes = 20;

/// Nobody runs the agent's messages, so a wish to be notified is checked and otherwise without effect.
bool isRequest(const CENOTIFYREQUEST& request) {
  return request.dwSize == kNotifyRequestBytes || request.dwSize == sizeof request;
}

const SortOrder* findOrder(const PropertyDatabase& database, const SORTORDERSPECEX& given) {
  const auto wanted = orderOf(given);
  if (!wanted) return nullptr;
  const auto ids = std::span(given.rgPropID).first(given.wNumProps);
  const auto found = std::ranges::find_if(
      database.orders, [ids](const SortOrder& order) { return hasProperties(order, ids); });
  return found == database.orders.end() ? nullptr : &*found;
}

/// The record's properties with what was given put, or taken away; nothing when a value can't be stored.
std::optional<RecordProperties> written(RecordProperties properties, std::span<const CEPROPVAL> values) {
  for (const CEPROPVAL& value : values) {
    if ((value.wFlags & CEDB_PROPDELETE) != 0) {
      removeProperty(properties, value.propid);
      continue;
    }
    auto property = propertyOf(value);
    if (!property) return std::nullopt;
    putProperty(properties, std::move(*property));
  }
  return properties;
}

std::vector<BlockValue> allOf(const RecordProperties& properties) {
  std::vector<BlockValue> values;
  values.reserve(properties.size());
  std::ranges::transform(properties, std::back_inserter(values), blockValue);
  return values;
}

std::vector<BlockValue> chosenFrom(const RecordProperties& properties, std::span<const CEPROPID> ids) {
  std::vector<BlockValue> values;
  values.reserve(ids.size());
  for (const CEPROPID id : ids) {
    const RecordProperty* const found = findProperty(properties, id);
    values.push_back(found == nullptr ? missingValue(id) : blockValue(*found));
  }
  return values;
}

bool hasAny(std::span<const BlockValue> values) {
  return std::ranges::any_of(
      values, [](const BlockValue& value) { return (value.value.wFlags & CEDB_PROPNOTFOUND) == 0; });
}

}  // namespace

Oid PropertyDatabases::fail(DWORD error) {
  lastError_.set(error);
  return 0;
}

HANDLE PropertyDatabases::failToOpen(DWORD error) {
  lastError_.set(error);
  return INVALID_HANDLE_VALUE;
}

Oid PropertyDatabases::create(std::u16string_view name, DWORD type, WORD count, const SORTORDERSPEC* orders) {
  if (!isDatabaseName(name) || (orders == nullptr && count != 0)) return fail(ERROR_INVALID_PARAMETER);
  auto stored = ordersOf({orders, count});
  if (!stored) return fail(ERROR_INVALID_PARAMETER);
  return make(PropertyDatabase{.name = std::u16string(name), .type = type, .orders = std::move(*stored)});
}

Oid PropertyDatabases::create(const CEGUID* volume, const CEDBASEINFOEX* description) {
  if (!isObjectStore(volume) || description == nullptr) return fail(ERROR_INVALID_PARAMETER);
  auto database = databaseOf(*description);
  return database ? make(std::move(*database)) : fail(ERROR_INVALID_PARAMETER);
}

Oid PropertyDatabases::make(PropertyDatabase database) {
  if (store_.catalog().find(database.name) != 0) return fail(ERROR_DUP_NAME);
  store_.catalog().create(database);
  return database.oid;
}

HANDLE PropertyDatabases::open(const CEGUID* volume, CEOID* oid, LPCWSTR name, const SORTORDERSPECEX* order,
                               DWORD flags, const CENOTIFYREQUEST* request) {
  if (!isObjectStore(volume) || oid == nullptr) return failToOpen(ERROR_INVALID_PARAMETER);
  if ((flags & ~CEDB_AUTOINCREMENT) != 0 || (request != nullptr && !isRequest(*request))) {
    return failToOpen(ERROR_INVALID_PARAMETER);
  }
  const bool isByName = *oid == 0 || *volume == kInvalidVolume;
  if (isByName && name == nullptr) return failToOpen(ERROR_INVALID_PARAMETER);
  const Oid found = isByName ? store_.catalog().find(name) : *oid;
  auto database = found == 0 ? nullptr : store_.use(found);
  if (!database) return failToOpen(isByName ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_PARAMETER);
  const SortOrder* const stored = order == nullptr ? nullptr : findOrder(*database, *order);
  if (order != nullptr && stored == nullptr) return failToOpen(ERROR_INVALID_PARAMETER);
  *oid = found;
  return handles_.add<HANDLE>(
      std::make_unique<OpenDatabase>(store_, std::move(database), stored, (flags & CEDB_AUTOINCREMENT) != 0));
}

Oid PropertyDatabases::seek(HANDLE database, DWORD type, DWORD_PTR value, DWORD* index) {
  auto* const open = handles_.find<OpenDatabase>(database);
  if (open == nullptr) return fail(ERROR_INVALID_HANDLE);
  if (const DWORD error = open->seek(type, value); error != ERROR_SUCCESS) return fail(error);
  if (index != nullptr) *index = static_cast<DWORD>(open->pointer().index());
  return open->pointer().record();
}

Oid PropertyDatabases::read(HANDLE database, WORD* count, const CEPROPID* ids, const ReadBuffer& buffer) {
  auto* const open = handles_.find<OpenDatabase>(database);
  if (open == nullptr) return fail(ERROR_INVALID_HANDLE);
  if (count == nullptr || buffer.block == nullptr || buffer.size == nullptr)
    return fail(ERROR_INVALID_PARAMETER);
  const Oid oid = open->pointer().record();
  if (oid == 0) return fail(ERROR_NO_MORE_ITEMS);
  const auto record = store_.records().load(oid);
  if (!record) return fail(ERROR_KEY_DELETED);
  const auto values =
      ids == nullptr ? allOf(record->properties) : chosenFrom(record->properties, {ids, *count});
  if (const DWORD error = fill(buffer, values); error != ERROR_SUCCESS) return fail(error);
  *count = static_cast<WORD>(values.size());
  open->moveOn();
  return hasAny(values) ? oid : fail(ERROR_NO_DATA);
}

/// The block is the call's to give: a caller that keeps an earlier one has lost it.
DWORD PropertyDatabases::fill(const ReadBuffer& buffer, std::span<const BlockValue> values) {
  const std::size_t needed = blockSize(values);
  BYTE* block = *buffer.block;
  if (buffer.mayReallocate) {
    block = static_cast<BYTE*>(memory_.allocateBlock(buffer.heap, needed));
    if (block == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
    if (*buffer.block != nullptr && !memory_.freeBlock(buffer.heap, *buffer.block)) {
      memory_.freeBlock(buffer.heap, block);
      return ERROR_INVALID_PARAMETER;
    }
  } else if (block == nullptr || *buffer.size < needed) {
    *buffer.size = static_cast<DWORD>(needed);
    return ERROR_INSUFFICIENT_BUFFER;
  }
  fillBlock(block, values);
  *buffer.block = block;
  *buffer.size = static_cast<DWORD>(needed);
  return ERROR_SUCCESS;
}

Oid PropertyDatabases::write(HANDLE database, Oid record, std::span<const CEPROPVAL> values) {
  auto* const open = handles_.find<OpenDatabase>(database);
  if (open == nullptr) return fail(ERROR_INVALID_HANDLE);
  if (values.data() == nullptr || values.empty()) return fail(ERROR_INVALID_PARAMETER);
  const auto existing = record == 0 ? std::nullopt : recordOf(*open, record);
  if (record != 0 && !existing) return fail(ERROR_INVALID_PARAMETER);
  const auto properties = written(existing ? existing->properties : RecordProperties(), values);
  if (!properties) return fail(ERROR_INVALID_PARAMETER);
  RecordStore& records = store_.records();
  const DWORD error = records.check(open->database(), record, *properties);
  if (error != ERROR_SUCCESS) return fail(error);
  if (existing) {
    records.change(open->database(), *existing, *properties);
  } else {
    record = records.add(open->database(), *properties);
  }
  return open->pointer().to(record);
}

bool PropertyDatabases::removeRecord(HANDLE database, Oid record) {
  auto* const open = handles_.find<OpenDatabase>(database);
  if (open == nullptr) return lastError_.fail(ERROR_INVALID_PARAMETER);
  const auto existing = recordOf(*open, record);
  if (!existing) return lastError_.fail(ERROR_INVALID_PARAMETER);
  store_.records().remove(open->database(), *existing);
  if (record == open->pointer().record()) open->moveOn();
  return true;
}

bool PropertyDatabases::remove(const CEGUID* volume, Oid database) {
  if (!isObjectStore(volume) || !store_.use(database)) return lastError_.fail(ERROR_INVALID_PARAMETER);
  if (store_.isInUse(database)) return lastError_.fail(ERROR_SHARING_VIOLATION);
  store_.remove(database);
  return true;
}

std::optional<Record> PropertyDatabases::recordOf(const OpenDatabase& open, Oid oid) {
  auto record = store_.records().load(oid);
  return record && record->database == open.database().oid ? std::move(record) : std::nullopt;
}

}  // namespace emulator
