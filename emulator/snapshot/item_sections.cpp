// "contacts", "appointments" and "tasks".
#include <algorithm>
#include <array>

#include "emulator/pim/recurrence_puts.h"
#include "emulator/snapshot/exceptions_json.h"
#include "emulator/snapshot/item_properties_json.h"
#include "emulator/snapshot/item_refusal.h"
#include "emulator/snapshot/recurrence_json.h"
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"
#include "platform/outlook.h"

namespace emulator {
namespace {

constexpr std::string_view kOidKey = "Oid";
constexpr std::string_view kRecurrenceKey = "Recurrence";
constexpr std::string_view kExceptionsKey = "Exceptions";

/// What an item has beside its properties; of the first kinds fewer.
constexpr std::array kOtherKeys{kOidKey, kRecurrenceKey, kExceptionsKey};

std::span<const std::string_view> otherKeys(ObjectKind kind) {
  if (kind == ObjectKind::Contact) return std::span(kOtherKeys).first(1);
  return std::span(kOtherKeys).first(kind == ObjectKind::Task ? 2 : 3);
}

void readRecurrence(const JsonNode& node, const PimItems& items, PimItem& item) {
  if (!node.isNull()) return setRule(item, readRule(node, items.freshPattern(item.properties)));
  item.rule.reset();
  item.ruleChanged = true;
  item.exceptionsDropped = true;
}

/// The item that an entry changes, or a new one.
PimItem itemOf(ObjectStore& store, PimItems& items, ObjectKind kind, const JsonNode& entry) {
  const auto oid = readIdentifier(entry, kOidKey);
  const auto holder = oid ? store.kindOf(*oid) : std::nullopt;
  if (holder && *holder != kind) refuseHeld(requireMember(entry, kOidKey), *holder);
  if (holder) return items.load(kind, *oid).value();
  PimItem item(kind);
  item.oid = oid.value_or(0);
  return item;
}

void loadItem(Device& device, ObjectKind kind, const JsonNode& entry) {
  PimItems& items = device.objectModel.items();
  PimItem item = itemOf(device.store, items, kind, entry);
  readProperties(entry, otherKeys(kind), item.properties);
  if (const auto recurrence = entry.member(kRecurrenceKey)) readRecurrence(*recurrence, items, item);
  const bool isSeries = kind == ObjectKind::Appointment && item.rule;
  if (isSeries && item.properties.get<double>(kStart) == kNoDate) entry.refuse("a series has a Start");
  const bool isNew = item.oid == 0 || !items.kindOf(item.oid);
  const HRESULT result = isNew ? items.add(item) : items.change(item);
  if (FAILED(result)) refuseItem(entry, result);
  if (const auto exceptions = entry.member(kExceptionsKey)) loadExceptions(items, item, *exceptions);
}

void loadItems(Device& device, ObjectKind kind, const JsonNode& list) {
  list.forEachElement([&](const JsonNode& entry) { loadItem(device, kind, entry); });
}

Json itemToJson(PimItems& items, const PimItem& item) {
  Json object = Json::object({{std::string(kOidKey), item.oid}});
  dumpProperties(item.properties, object);
  if (!item.rule) return object;
  object[std::string(kRecurrenceKey)] = ruleToJson(*item.rule);
  if (item.kind() == ObjectKind::Appointment) {
    object[std::string(kExceptionsKey)] = exceptionsToJson(item, items.exceptions(item));
  }
  return object;
}

Json dumpItems(Device& device, ObjectKind kind) {
  PimItems& items = device.objectModel.items();
  std::vector<Oid> oids = items.list(kind);
  std::ranges::sort(oids);
  Json list = Json::array();
  for (const Oid oid : oids) list.push_back(itemToJson(items, items.load(kind, oid).value()));
  return list;
}

}  // namespace

void loadContacts(Device& device, const JsonNode& node) {
  loadItems(device, ObjectKind::Contact, node);
}

Json dumpContacts(Device& device) {
  return dumpItems(device, ObjectKind::Contact);
}

void loadAppointments(Device& device, const JsonNode& node) {
  loadItems(device, ObjectKind::Appointment, node);
}

Json dumpAppointments(Device& device) {
  return dumpItems(device, ObjectKind::Appointment);
}

void loadTasks(Device& device, const JsonNode& node) {
  loadItems(device, ObjectKind::Task, node);
}

Json dumpTasks(Device& device) {
  return dumpItems(device, ObjectKind::Task);
}

}  // namespace emulator
