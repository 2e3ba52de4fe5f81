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

/// Undoes everything unless the end is reached.
class Attempt {
 public:
  explicit Attempt(Device& device) : device_(device) {}
  Attempt(const Attempt&) = delete;
  Attempt& operator=(const Attempt&) = delete;
  ~Attempt() {
    if (!succeeded_) device_.rollback();
  }
  void succeed() {
    device_.commit();
    succeeded_ = true;
  }

 private:
  Device& device_;
  bool succeeded_ = false;
};

void requireKnownKeys(const JsonNode& snapshot) {
  snapshot.forEachMember([](std::string_view key, const JsonNode& section) {
    if (std::ranges::find(sections(), key, &Section::key) == sections().end()) section.refuse("unknown key");
  });
}

/// The identifiers that the snapshot chooses are kept free for it: an entry without one, or a folder that is
/// made on the way, gets another.
void reserveIdentifiers(ObjectStore& store, const JsonNode& snapshot) {
  std::unordered_set<Oid> seen;
  for (const Section& section : sections()) {
    const auto list = snapshot.member(section.key);
    if (!list || section.identifier.empty()) continue;
    list->forEachElement([&](const JsonNode& entry) {
      const auto oid = readIdentifier(entry, section.identifier);
      if (!oid) return;
      if (!seen.insert(*oid).second) {
        requireMember(entry, section.identifier).refuse("identifier of another entry as well");
      }
      store.reserve(*oid);
    });
  }
}

}  // namespace

void loadSnapshot(Device& device, std::string_view text) {
  const Json json = parseJson(text);
  const JsonNode snapshot(json);
  Attempt attempt(device);
  requireKnownKeys(snapshot);
  reserveIdentifiers(device.store, snapshot);
  for (const Section& section : sections()) {
    if (const auto node = snapshot.member(section.key)) section.load(device, *node);
  }
  attempt.succeed();
}

void dumpSnapshot(Device& device, std::ostream& out) {
  Json snapshot = Json::object();
  for (const Section& section : sections()) snapshot[std::string(section.key)] = section.dump(device);
  out << std::setw(kIndentation) << snapshot << '\n';
}

}  // namespace emulator
