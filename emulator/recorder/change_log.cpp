#include "emulator/recorder/change_log.h"

#include <utility>

#include "emulator/database/record_walk.h"

namespace emulator {
namespace {

constexpr CEPROPID kItem = 0x12010003;
constexpr CEPROPID kSequence = 0x12020003;
constexpr CEPROPID kChange = 0x12030003;

/// Whoever reads a log stops at the first record that is not new, so the newest come first.
PropertyDatabase newLog(const std::u16string& name) {
  return {.name = name, .orders = {{.properties = {{kSequence, CEDB_SORT_DESCENDING}}}}};
}

Oid findOrMake(DatabaseCatalog& catalog, const std::u16string& name) {
  if (const Oid found = catalog.find(name); found != 0) return found;
  PropertyDatabase log = newLog(name);
  catalog.create(log);
  return log.oid;
}

}  // namespace

ChangeLog::ChangeLog(DatabaseStore& databases, Registry& registry, std::u16string name,
                     std::u16string_view registryKey)
    : databases_(databases),
      registry_(registry),
      name_(std::move(name)),
      registryKey_(registry.makeKey(registryKey).value()),
      database_(databases.use(findOrMake(databases.catalog(), name_))) {}

void ChangeLog::append(DWORD item, LoggedChange change) {
  write(find(item), item, countOn(), change);
}

void ChangeLog::amend(DWORD item, LoggedChange change) {
  const auto existing = find(item);
  if (!existing) return write({}, item, countOn(), change);
  if (numberOf(existing->properties, kChange) == static_cast<DWORD>(change)) return;
  write(existing, item, numberOf(existing->properties, kSequence).value_or(0), change);
}

/// By an order of the device's own: a log has none on its items.
std::optional<Record> ChangeLog::find(DWORD item) {
  const SortOrder& order = databases_.ownOrder(*database_, kItem);
  const Bytes key = sortKeyOfValue(order.properties.front(), numberProperty(kItem, item).data);
  RecordWalk walk(databases_.connection(), database_->oid, &order);
  const auto place = walk.firstWithin(key, keyPast(key));
  return place ? databases_.records().load(place->record) : std::nullopt;
}

void ChangeLog::write(const std::optional<Record>& existing, DWORD item, DWORD sequence,
                      LoggedChange change) {
  const RecordProperties properties{numberProperty(kItem, item), numberProperty(kSequence, sequence),
                                    numberProperty(kChange, static_cast<DWORD>(change))};
  if (existing) {
    databases_.records().change(*database_, *existing, properties);
  } else {
    databases_.records().add(*database_, properties);
  }
}

DWORD ChangeLog::countOn() {
  const auto counter = registry_.get(registryKey_, name_);
  const DWORD next = (counter ? numberOf(*counter).value_or(0) : 0) + 1;
  registry_.put(registryKey_, numberValue(name_, next));
  return next;
}

}  // namespace emulator
