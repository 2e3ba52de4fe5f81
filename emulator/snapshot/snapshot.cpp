#include "emulator/snapshot/snapshot.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <unordered_set>

#include "emulator/snapshot/sections.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

constexpr int kIndentation = 2;

/// Everything that is read and written belongs to one moment, whoever else uses the device file meanwhile.
/// What was written is undone unless it is kept.
class Transaction {
 public:
  /// `begin` is SQL. A transaction that goes on already is joined.
  Transaction(Device& device, const char* begin) : device_(device) {
    if (!device.store.connection().inTransaction()) device.store.connection().execute(begin);
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction() {
    if (!kept_) device_.rollback();
  }
  void keep() {
    device_.commit();
    kept_ = true;
  }

 private:
  Device& device_;
  bool kept_ = false;
};

void requireKnownKeys(const JsonNode& snapshot) {
  snapshot.forEachMember([](std::string_view key, const JsonNode& section) {
    if (std::ranges::find(sections(), key, &Section::key) == sections().end()) section.refuse("unknown key");
  });
}

/// The identifiers that the snapshot chooses are kept free for it: an entry without one, or a folder that is
/// made on the way, gets another.
class Reservation {
 public:
  explicit Reservation(ObjectStore& store) : store_(store) {}

  /// `identifier` and `inner` are a section's.
  void reserve(const JsonNode& list, std::string_view identifier, std::string_view inner) {
    list.forEachElement([&](const JsonNode& entry) {
      reserveOne(entry, identifier);
      const auto objects = inner.empty() ? std::nullopt : entry.member(inner);
      if (objects && !objects->isNull()) reserve(*objects, identifier, {});
    });
  }

 private:
  void reserveOne(const JsonNode& entry, std::string_view identifier) {
    const auto oid = readIdentifier(entry, identifier);
    if (!oid) return;
    if (!seen_.insert(*oid).second) {
      requireMember(entry, identifier).refuse("identifier of another entry as well");
    }
    store_.reserve(*oid);
  }

  ObjectStore& store_;
  std::unordered_set<Oid> seen_;
};

void reserveIdentifiers(ObjectStore& store, const JsonNode& snapshot) {
  Reservation reservation(store);
  for (const Section& section : sections()) {
    const auto list = snapshot.member(section.key);
    if (list && !section.identifier.empty()) reservation.reserve(*list, section.identifier, section.inner);
  }
}

}  // namespace

void loadSnapshot(Device& device, std::string_view text) {
  const Json json = parseJson(text);
  const JsonNode snapshot(json);
  Transaction transaction(device, "BEGIN IMMEDIATE");
  requireKnownKeys(snapshot);
  reserveIdentifiers(device.store, snapshot);
  for (const Section& section : sections()) {
    if (const auto node = snapshot.member(section.key)) section.load(device, *node);
  }
  transaction.keep();
}

void dumpSnapshot(Device& device, std::ostream& out) {
  Transaction transaction(device, "BEGIN");
  Json snapshot = Json::object();
  for (const Section& section : sections()) snapshot[std::string(section.key)] = section.dump(device);
  transaction.keep();
  out << std::setw(kIndentation) << snapshot << '\n';
}

}  // namespace emulator
