#include "emulator/database/database_catalog.h"

#include "emulator/system/case_fold.h"

namespace emulator {

Oid DatabaseCatalog::find(std::u16string_view name) {
  Cursor row = connection_.query("SELECT oid FROM property_database WHERE folded = ?", foldCase(name));
  return row.next() ? row.get<Oid>(0) : 0;
}

std::optional<PropertyDatabase> DatabaseCatalog::load(Oid database) {
  Cursor row = connection_.query("SELECT name, type, flags FROM property_database WHERE oid = ?", database);
  if (!row.next()) return std::nullopt;
  return PropertyDatabase{database,          row.get<std::u16string>(0),  row.get<DWORD>(1),
                          row.get<DWORD>(2), loadOrders(database, false), loadOrders(database, true)};
}

std::vector<SortOrder> DatabaseCatalog::loadOrders(Oid database, bool own) {
  std::vector<SortOrder> orders;
  Cursor row = connection_.query(
      "SELECT id, key_flags, property, flags FROM sort_order JOIN sort_property ON sort_order = id"
      " WHERE parent = ? AND is_own = ? ORDER BY id, place",
      database, own);
  while (row.next()) {
    const auto id = row.get<std::int64_t>(0);
    if (orders.empty() || orders.back().id != id) orders.push_back({id, row.get<WORD>(1), {}});
    orders.back().properties.push_back({row.get<CEPROPID>(2), row.get<DWORD>(3)});
  }
  return orders;
}

DatabaseState DatabaseCatalog::state(Oid database) {
  Cursor row =
      connection_.query("SELECT records, size, modified FROM property_database WHERE oid = ?", database);
  if (!row.next()) return {};
  return {row.get<DWORD>(0), row.get<DWORD>(1), row.get<Ticks>(2)};
}

std::vector<Oid> DatabaseCatalog::list() {
  std::vector<Oid> oids;
  Cursor row = connection_.query("SELECT oid FROM property_database ORDER BY oid");
  while (row.next()) oids.push_back(row.get<Oid>(0));
  return oids;
}

void DatabaseCatalog::create(PropertyDatabase& database) {
  if (database.oid == 0) {
    database.oid = store_.allocate(ObjectKind::Database);
  } else {
    store_.claim(database.oid, ObjectKind::Database);
  }
  connection_.run(
      "INSERT INTO property_database (oid, name, folded, type, flags, modified) VALUES (?, ?, ?, ?, ?, ?)",
      database.oid, database.name, foldCase(database.name), database.type, database.flags, clock_.now());
  for (SortOrder& order : database.orders) addOrder(database.oid, order, false);
}

void DatabaseCatalog::describe(const PropertyDatabase& database) {
  connection_.run(
      "UPDATE property_database SET name = ?, folded = ?, type = ?, flags = ?, modified = ? WHERE oid = ?",
      database.name, foldCase(database.name), database.type, database.flags, clock_.now(), database.oid);
}

void DatabaseCatalog::addOrder(Oid database, SortOrder& order, bool isOwn) {
  {
    Cursor row =
        connection_.query("INSERT INTO sort_order (parent, key_flags, is_own) VALUES (?, ?, ?) RETURNING id",
                          database, order.keyFlags, isOwn);
    row.next();
    order.id = row.get<std::int64_t>(0);
  }
  for (std::size_t place = 0; place < order.properties.size(); ++place) {
    connection_.run("INSERT INTO sort_property (sort_order, place, property, flags) VALUES (?, ?, ?, ?)",
                    order.id, place, order.properties[place].id, order.properties[place].flags);
  }
}

void DatabaseCatalog::removeOrders(Oid database) {
  connection_.run("DELETE FROM sort_order WHERE parent = ? AND NOT is_own", database);
}

void DatabaseCatalog::remove(Oid database) {
  connection_.run("DELETE FROM property_database WHERE oid = ?", database);
  store_.release(database);
}

void DatabaseCatalog::noteChange(Oid database, int records, std::int64_t bytes) {
  connection_.run(
      "UPDATE property_database SET records = records + ?, size = size + ?, modified = ? WHERE oid = ?",
      records, bytes, clock_.now(), database);
}

}  // namespace emulator
