#include "emulator/database/database_store.h"

#include <algorithm>

namespace emulator {

std::shared_ptr<PropertyDatabase> DatabaseStore::use(Oid database) {
  auto& used = used_[database];
  if (auto kept = used.lock()) return kept;
  auto loaded = catalog_.load(database);
  if (!loaded) {
    used_.erase(database);
    return nullptr;
  }
  auto made = std::make_shared<PropertyDatabase>(std::move(*loaded));
  used = made;
  return made;
}

bool DatabaseStore::isInUse(Oid database) const {
  const auto found = used_.find(database);
  return found != used_.end() && !found->second.expired();
}

void DatabaseStore::remove(Oid database) {
  const auto removed = use(database);
  if (!removed) return;
  records_.removeAll(*removed);
  catalog_.remove(database);
  removed->oid = 0;
  used_.erase(database);
}

bool DatabaseStore::removeRecord(Oid record) {
  const auto found = records_.load(record);
  if (!found) return false;
  records_.remove(*use(found->database), *found);
  return true;
}

void DatabaseStore::forgetUndone() {
  records_.forgetUndone();
  for (const auto& [oid, used] : used_) {
    const auto kept = used.lock();
    if (!kept) continue;
    const auto stored = catalog_.load(oid);
    kept->ownOrders = stored ? stored->ownOrders : std::vector<SortOrder>();
  }
}

const SortOrder& DatabaseStore::ownOrder(PropertyDatabase& database, CEPROPID property) {
  const auto found = std::ranges::find_if(database.ownOrders, [property](const SortOrder& order) {
    return hasProperties(order, std::span(&property, 1));
  });
  if (found != database.ownOrders.end()) return *found;
  SortOrder order{.properties = {{property, 0}}};
  catalog_.addOrder(database.oid, order, true);
  records_.fillOrder(database.oid, order);
  return database.ownOrders.emplace_back(std::move(order));
}

}  // namespace emulator
