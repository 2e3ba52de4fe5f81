#include "emulator/database/record_store.h"

#include "platform/errors.h"

namespace emulator {
namespace {

template <typename Action>
void forEachOrder(const PropertyDatabase& database, Action action) {
  for (const SortOrder& order : database.orders) action(order);
  for (const SortOrder& order : database.ownOrders) action(order);
}

std::int64_t signedSize(const RecordProperties& properties) {
  return static_cast<std::int64_t>(sizeOf(properties));
}

}  // namespace

std::optional<Record> RecordStore::load(Oid record) {
  Cursor row = connection_.query("SELECT parent, properties FROM record WHERE oid = ?", record);
  if (!row.next()) return std::nullopt;
  return Record{record, row.get<Oid>(0), unpacked(row.get<ByteView>(1))};
}

std::vector<Oid> RecordStore::list(Oid database) {
  std::vector<Oid> oids;
  Cursor row = connection_.query("SELECT oid FROM record WHERE parent = ? ORDER BY oid", database);
  while (row.next()) oids.push_back(row.get<Oid>(0));
  return oids;
}

DWORD RecordStore::check(const PropertyDatabase& database, Oid record, const RecordProperties& properties) {
  if (sizeOf(properties) > kLongestRecord) return ERROR_INVALID_PARAMETER;
  for (const SortOrder& order : database.orders) {
    if (!order.takes(properties)) return ERROR_INVALID_PARAMETER;
    if (order.isUniqueFor(properties) && isTaken(order, sortKey(order, properties), record))
      return ERROR_REPEATED_KEY;
  }
  return ERROR_SUCCESS;
}

bool RecordStore::isTaken(const SortOrder& order, const Bytes& key, Oid record) {
  return connection_
      .query("SELECT 1 FROM record_key WHERE sort_order = ? AND key = ? AND record <> ?", order.id, key,
             record)
      .next();
}

Oid RecordStore::add(const PropertyDatabase& database, const RecordProperties& properties, Oid oid) {
  if (oid == 0) {
    oid = store_.allocate(ObjectKind::Record);
  } else {
    store_.claim(oid, ObjectKind::Record);
  }
  connection_.run("INSERT INTO record (oid, parent, properties) VALUES (?, ?, ?)", oid, database.oid,
                  packed(properties));
  addKeys(database, oid, properties);
  catalog_.noteChange(database.oid, 1, signedSize(properties));
  ++version_;
  return oid;
}

void RecordStore::change(const PropertyDatabase& database, const Record& record,
                         const RecordProperties& properties) {
  connection_.run("UPDATE record SET properties = ? WHERE oid = ?", packed(properties), record.oid);
  removeKeys(database, record);
  addKeys(database, record.oid, properties);
  catalog_.noteChange(database.oid, 0, signedSize(properties) - signedSize(record.properties));
  ++version_;
}

void RecordStore::remove(const PropertyDatabase& database, const Record& record) {
  removeKeys(database, record);
  connection_.run("DELETE FROM record WHERE oid = ?", record.oid);
  store_.release(record.oid);
  catalog_.noteChange(database.oid, -1, -signedSize(record.properties));
  ++version_;
}

void RecordStore::removeAll(const PropertyDatabase& database) {
  for (const Oid oid : list(database.oid)) {
    if (const auto record = load(oid)) remove(database, *record);
  }
}

void RecordStore::addKeys(const PropertyDatabase& database, Oid record, const RecordProperties& properties) {
  forEachOrder(database, [&](const SortOrder& order) {
    connection_.run("INSERT INTO record_key (sort_order, key, record) VALUES (?, ?, ?)", order.id,
                    sortKey(order, properties), record);
  });
}

void RecordStore::removeKeys(const PropertyDatabase& database, const Record& record) {
  forEachOrder(database, [&](const SortOrder& order) {
    connection_.run("DELETE FROM record_key WHERE sort_order = ? AND key = ? AND record = ?", order.id,
                    sortKey(order, record.properties), record.oid);
  });
}

void RecordStore::fillOrder(Oid database, const SortOrder& order) {
  for (const Oid oid : list(database)) {
    const auto record = load(oid);
    if (!record) continue;
    connection_.run("INSERT INTO record_key (sort_order, key, record) VALUES (?, ?, ?)", order.id,
                    sortKey(order, record->properties), oid);
  }
  ++version_;
}

void RecordStore::clearOrder(const SortOrder& order) {
  connection_.run("DELETE FROM record_key WHERE sort_order = ?", order.id);
  ++version_;
}

}  // namespace emulator
