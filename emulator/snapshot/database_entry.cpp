#include "emulator/snapshot/database_entry.h"

#include <array>
#include <limits>

#include "emulator/database/database_description.h"
#include "emulator/snapshot/database_values_json.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

constexpr const char* kOidKey = "oid";
constexpr const char* kNameKey = "name";
constexpr const char* kTypeKey = "type";
constexpr const char* kFlagsKey = "flags";
constexpr const char* kSortKey = "sort";
constexpr const char* kPropertiesKey = "properties";

void readName(DatabaseEntry& entry, const JsonNode& node) {
  entry.name = readText(node);
  if (!isDatabaseName(*entry.name)) {
    node.refuse("a database's name has 1 to 32 characters, and no backslash at its end");
  }
}

/// Null is what a new database has.
DWORD readNumber(const JsonNode& node) {
  return node.isNull() ? 0 : static_cast<DWORD>(node.number(0, std::numeric_limits<DWORD>::max()));
}

void readOrders(DatabaseEntry& entry, const JsonNode& node) {
  auto& orders = entry.orders.emplace();
  if (node.isNull()) return;
  node.forEachElement([&orders](const JsonNode& order) { orders.push_back(readOrder(order)); });
  if (orders.size() > CEDB_MAXSORTORDER) node.refuse("a database has at most 4 sort orders");
}

constexpr std::array kFields{
    Field<DatabaseEntry>{kOidKey, [](DatabaseEntry&, const JsonNode&) {}},
    Field<DatabaseEntry>{kNameKey, readName},
    Field<DatabaseEntry>{kTypeKey,
                         [](DatabaseEntry& entry, const JsonNode& node) { entry.type = readNumber(node); }},
    Field<DatabaseEntry>{kFlagsKey,
                         [](DatabaseEntry& entry, const JsonNode& node) { entry.flags = readNumber(node); }},
    Field<DatabaseEntry>{kSortKey, readOrders},
    Field<DatabaseEntry>{kRecordsKey, [](DatabaseEntry& entry, const JsonNode&) { entry.hasRecords = true; }},
};

void readProperties(Record& record, const JsonNode& node) {
  node.forEachElement([&record](const JsonNode& element) {
    RecordProperty property = readProperty(element);
    if (findProperty(record.properties, property.id) != nullptr) element.refuse("given twice");
    record.properties.push_back(std::move(property));
  });
}

constexpr std::array kRecordFields{
    Field<Record>{kOidKey, [](Record&, const JsonNode&) {}},
    Field<Record>{kPropertiesKey, readProperties},
};

}  // namespace

DatabaseEntry readDatabaseEntry(const JsonNode& node) {
  DatabaseEntry entry;
  readFields<DatabaseEntry>(node, kFields, entry);
  entry.oid = readIdentifier(node, kOidKey);
  return entry;
}

Record readRecord(const JsonNode& node) {
  Record record;
  readFields<Record>(node, kRecordFields, record);
  record.oid = readIdentifier(node, kOidKey).value_or(0);
  return record;
}

Json recordToJson(const Record& record) {
  Json properties = Json::array();
  for (const RecordProperty& property : record.properties) properties.push_back(propertyToJson(property));
  return Json::object({{kOidKey, record.oid}, {kPropertiesKey, std::move(properties)}});
}

Json databaseToJson(const PropertyDatabase& database, RecordStore& records) {
  Json entry = Json::object(
      {{kNameKey, textToJson(database.name)}, {kOidKey, database.oid}, {kTypeKey, database.type}});
  if (database.flags != 0) entry[kFlagsKey] = database.flags;
  Json& orders = entry[kSortKey] = Json::array();
  for (const SortOrder& order : database.orders) orders.push_back(orderToJson(order));
  Json& list = entry[kRecordsKey] = Json::array();
  for (const Oid oid : records.list(database.oid)) list.push_back(recordToJson(records.load(oid).value()));
  return entry;
}

}  // namespace emulator
