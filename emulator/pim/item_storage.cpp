#include "emulator/pim/item_storage.h"

#include <span>

#include "emulator/pim/item_schema.h"

namespace emulator {
namespace {

constexpr std::string_view kRuleColumns =
    "r.type, r.start_day, r.series_end, r.end_day, r.occurrences, r.repeat_interval, r.day_mask,"
    " r.day_of_month, r.instance, r.month_of_year";

template <typename Render>
std::string joined(std::span<const Property> properties, Render render) {
  std::string list;
  for (const Property& property : properties) {
    if (!list.empty()) list += ", ";
    list += render(property);
  }
  return list;
}

std::string columns(const ItemTable& table) {
  return joined(table.properties, detail::columnName);
}

std::string placeholders(const ItemTable& table) {
  return joined(table.properties, [](const Property&) { return "?"; });
}

std::string assignments(const ItemTable& table) {
  return joined(table.properties,
                [](const Property& property) { return detail::columnName(property) + " = ?"; });
}

PropertyValue readValue(const Cursor& row, int column, PropertyType type) {
  switch (type) {
    case PropertyType::Text:
      return row.get<std::u16string>(column);
    case PropertyType::Date:
      return row.get<double>(column);
    case PropertyType::Number:
      return row.get<std::int32_t>(column);
    case PropertyType::Flag:
      break;
  }
  return row.get<bool>(column);
}

// Columns that are null leave the record as it is.
void readRecord(const Cursor& row, int firstColumn, ItemRecord& record) {
  for (std::size_t place = 0; place < record.size(); ++place) {
    const int column = firstColumn + static_cast<int>(place);
    if (!row.isNull(column)) record.set(place, readValue(row, column, record.property(place).type));
  }
  record.forgetChanges();
}

std::optional<RecurrenceRule> readRule(const Cursor& row, int column) {
  if (row.isNull(column)) return std::nullopt;
  RecurrenceRule rule;
  rule.type = row.get<RecurrenceType>(column);
  rule.start = row.get<Day>(column + 1);
  rule.end = row.get<SeriesEnd>(column + 2);
  rule.endDate = row.get<Day>(column + 3);
  rule.count = row.get<std::int32_t>(column + 4);
  rule.interval = row.get<std::int32_t>(column + 5);
  rule.dayMask = row.get<std::int32_t>(column + 6);
  rule.dayOfMonth = row.get<std::int32_t>(column + 7);
  rule.instance = row.get<std::int32_t>(column + 8);
  rule.monthOfYear = row.get<std::int32_t>(column + 9);
  return rule;
}

SeriesException readException(const Cursor& row, const PimItem& series) {
  SeriesException exception{row.get<Day>(0), std::nullopt};
  const bool deleted = row.get<bool>(1);
  if (!deleted) {
    exception.appointment = series.properties;
    readRecord(row, 2, *exception.appointment);
  }
  return exception;
}

using SparseValue = std::variant<std::nullptr_t, std::u16string, double, std::int32_t, bool>;

// What an exception's appointment has in common with its series follows the series.
std::vector<SparseValue> differences(const ItemRecord& series, const std::optional<ItemRecord>& appointment) {
  std::vector<SparseValue> values(series.size());
  for (std::size_t place = 0; appointment && place < series.size(); ++place) {
    const bool ownTime = place == kStart || place == kEnd;
    if (!ownTime && appointment->value(place) == series.value(place)) continue;
    std::visit([&](const auto& value) { values[place] = value; }, appointment->value(place));
  }
  return values;
}

}  // namespace

ItemStorage::ItemStorage(ObjectStore& store) : store_(store), connection_(store.connection()) {
  for (std::size_t i = 0; i < kItemTables.size(); ++i) statements_[i] = statementsFor(*kItemTables[i]);
  const std::string exceptions = "SELECT original_day, deleted, " + columns(kAppointmentTable) +
                                 " FROM series_exception WHERE series = ?";
  loadExceptions_ = exceptions + " ORDER BY original_day";
  loadException_ = exceptions + " AND original_day = ?";
  putException_ = "INSERT OR REPLACE INTO series_exception (series, original_day, deleted, " +
                  columns(kAppointmentTable) + ") VALUES (?, ?, ?, " + placeholders(kAppointmentTable) + ")";
  moveException_ = "UPDATE series_exception SET " + detail::columnName(kAppointmentProperties[kStart]) +
                   " = ?, " + detail::columnName(kAppointmentProperties[kEnd]) +
                   " = ? WHERE series = ? AND original_day = ?";
}

ItemStorage::Statements ItemStorage::statementsFor(const ItemTable& table) {
  const std::string name(table.name);
  return {.count = "SELECT COUNT(*) FROM " + name,
          .list = "SELECT oid FROM " + name + " ORDER BY " + std::string(table.order),
          .load = "SELECT " + columns(table) + ", " + std::string(kRuleColumns) + " FROM " + name +
                  " i LEFT JOIN recurrence r ON r.oid = i.oid WHERE i.oid = ?",
          .insert = "INSERT INTO " + name + " (oid, " + columns(table) + ") VALUES (?, " +
                    placeholders(table) + ")",
          .update = "UPDATE " + name + " SET " + assignments(table) + " WHERE oid = ?",
          .remove = "DELETE FROM " + name + " WHERE oid = ?"};
}

const ItemStorage::Statements& ItemStorage::statements(ObjectKind kind) const {
  std::size_t place = 0;
  while (kItemTables[place]->kind != kind) ++place;
  return statements_[place];
}

std::int32_t ItemStorage::count(ObjectKind kind) {
  Cursor row = connection_.query(statements(kind).count);
  return row.next() ? row.get<std::int32_t>(0) : 0;
}

std::vector<Oid> ItemStorage::list(ObjectKind kind) {
  std::vector<Oid> oids;
  Cursor row = connection_.query(statements(kind).list);
  while (row.next()) oids.push_back(row.get<Oid>(0));
  return oids;
}

std::optional<PimItem> ItemStorage::load(ObjectKind kind, Oid oid) {
  Cursor row = connection_.query(statements(kind).load, oid);
  if (!row.next()) return std::nullopt;
  PimItem item(kind);
  item.oid = oid;
  readRecord(row, 0, item.properties);
  item.rule = readRule(row, static_cast<int>(item.properties.size()));
  return item;
}

void ItemStorage::insert(PimItem& item) {
  if (item.oid == 0) {
    item.oid = store_.allocate(item.kind());
  } else {
    store_.claim(item.oid, item.kind());
  }
  connection_.run(statements(item.kind()).insert, item.oid, item.properties.values());
  writeRule(item);
}

void ItemStorage::update(const PimItem& item) {
  connection_.run(statements(item.kind()).update, item.properties.values(), item.oid);
  writeRule(item);
}

void ItemStorage::remove(ObjectKind kind, Oid oid) {
  removeExceptions(oid);
  connection_.run("DELETE FROM recurrence WHERE oid = ?", oid);
  connection_.run(statements(kind).remove, oid);
  store_.release(oid);
}

void ItemStorage::writeRule(const PimItem& item) {
  if (!item.rule) {
    connection_.run("DELETE FROM recurrence WHERE oid = ?", item.oid);
    return;
  }
  const RecurrenceRule& rule = *item.rule;
  connection_.run("INSERT OR REPLACE INTO recurrence VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", item.oid,
                  rule.type, rule.start, rule.end, rule.endDate, rule.count, rule.interval, rule.dayMask,
                  rule.dayOfMonth, rule.instance, rule.monthOfYear);
}

SeriesExceptions ItemStorage::loadExceptions(const PimItem& series) {
  SeriesExceptions exceptions;
  Cursor row = connection_.query(loadExceptions_, series.oid);
  while (row.next()) exceptions.push_back(readException(row, series));
  return exceptions;
}

std::optional<SeriesException> ItemStorage::loadException(const PimItem& series, Day originalDay) {
  Cursor row = connection_.query(loadException_, series.oid, originalDay);
  if (!row.next()) return std::nullopt;
  return readException(row, series);
}

void ItemStorage::putException(const PimItem& series, const SeriesException& exception) {
  const std::vector<SparseValue> values = differences(series.properties, exception.appointment);
  connection_.run(putException_, series.oid, exception.originalDay, !exception.appointment.has_value(),
                  std::span<const SparseValue>(values));
}

void ItemStorage::moveException(Oid series, const SeriesException& exception) {
  const ItemRecord& appointment = exception.appointment.value();
  connection_.run(moveException_, appointment.get<double>(kStart), appointment.get<double>(kEnd), series,
                  exception.originalDay);
}

void ItemStorage::removeExceptions(Oid series) {
  connection_.run("DELETE FROM series_exception WHERE series = ?", series);
}

}  // namespace emulator
