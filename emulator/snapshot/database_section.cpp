// "databases": property databases, each known by its identifier or its name, with their records.
#include <unordered_set>

#include "emulator/snapshot/database_entry.h"
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"
#include "emulator/system/case_fold.h"
#include "emulator/system/utf16.h"
#include "platform/errors.h"

namespace emulator {
namespace {

constexpr const char* kOidKey = "oid";

/// Adds the record, under its identifier if it has one.
void addRecord(Device& device, const PropertyDatabase& database, const Record& record, const JsonNode& node) {
  RecordStore& records = device.databaseStore.records();
  const DWORD error = records.check(database, 0, record.properties);
  if (error == ERROR_REPEATED_KEY) node.refuse("another record has the same key in a unique order");
  if (error != ERROR_SUCCESS) node.refuse("too long, or without a property that a sort order requires");
  records.add(database, record.properties, record.oid);
}

void loadRecords(Device& device, const PropertyDatabase& database, const JsonNode& list) {
  if (list.isNull()) return;
  list.forEachElement([&](const JsonNode& node) {
    const Record record = readRecord(node);
    const auto holder = record.oid == 0 ? std::nullopt : device.store.kindOf(record.oid);
    if (holder) refuseHeld(requireMember(node, kOidKey), *holder);
    addRecord(device, database, record, node);
  });
}

void setOrders(DatabaseCatalog& catalog, PropertyDatabase& database, const std::vector<SortOrder>& orders) {
  catalog.removeOrders(database.oid);
  database.orders = orders;
  for (SortOrder& order : database.orders) catalog.addOrder(database.oid, order, false);
}

/// The records that stay while the orders change.
std::vector<Record> recordsOf(RecordStore& records, Oid database) {
  std::vector<Record> found;
  for (const Oid oid : records.list(database)) found.push_back(records.load(oid).value());
  return found;
}

void changeDatabase(Device& device, const JsonNode& node, const DatabaseEntry& entry) {
  DatabaseStore& store = device.databaseStore;
  const auto database = store.use(*entry.oid);
  if (entry.name) database->name = *entry.name;
  if (entry.type) database->type = *entry.type;
  if (entry.flags) database->flags = *entry.flags;
  store.catalog().describe(*database);
  if (!entry.orders && !entry.hasRecords) return;
  const auto kept = entry.hasRecords ? std::vector<Record>() : recordsOf(store.records(), database->oid);
  store.records().removeAll(*database);
  if (entry.orders) setOrders(store.catalog(), *database, *entry.orders);
  for (const Record& record : kept) addRecord(device, *database, record, node);
}

void makeDatabase(Device& device, const JsonNode& node, const DatabaseEntry& entry) {
  if (!entry.name) node.refuse("a new database has a name");
  PropertyDatabase database{.oid = entry.oid.value_or(0),
                            .name = *entry.name,
                            .type = entry.type.value_or(0),
                            .flags = entry.flags.value_or(0),
                            .orders = entry.orders.value_or(std::vector<SortOrder>())};
  device.databaseStore.catalog().create(database);
}

void loadDatabase(Device& device, const JsonNode& node) {
  DatabaseStore& store = device.databaseStore;
  const DatabaseEntry entry = readDatabaseEntry(node);
  // A database given by name replaces the one of that name.
  if (entry.name) store.remove(store.catalog().find(*entry.name));
  const auto holder = entry.oid ? device.store.kindOf(*entry.oid) : std::nullopt;
  if (holder && *holder != ObjectKind::Database) refuseHeld(requireMember(node, kOidKey), *holder);
  if (holder) {
    changeDatabase(device, node, entry);
  } else {
    makeDatabase(device, node, entry);
  }
  if (!entry.hasRecords) return;
  const Oid oid = holder ? *entry.oid : store.catalog().find(*entry.name);
  loadRecords(device, *store.use(oid), requireMember(node, kRecordsKey));
}

/// The later of two would replace the earlier.
void requireOwnNames(const JsonNode& list) {
  std::unordered_set<std::u16string> names;
  list.forEachElement([&names](const JsonNode& entry) {
    const auto name = entry.member("name");
    if (name && !names.insert(foldCase(readText(*name))).second) {
      name->refuse(toUtf8(readText(*name)) + " is the name of another entry as well");
    }
  });
}

}  // namespace

void loadDatabases(Device& device, const JsonNode& node) {
  requireOwnNames(node);
  node.forEachElement([&device](const JsonNode& entry) { loadDatabase(device, entry); });
}

Json dumpDatabases(Device& device) {
  Json list = Json::array();
  DatabaseStore& store = device.databaseStore;
  for (const Oid oid : store.catalog().list()) {
    list.push_back(databaseToJson(*store.use(oid), store.records()));
  }
  return list;
}

}  // namespace emulator
