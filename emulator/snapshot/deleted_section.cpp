// "deleted": identifiers of objects that go. A folder goes with what is in it, a database with its records.
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

/// Whether there was such an object.
bool removeObject(Device& device, Oid oid) {
  const auto kind = device.store.kindOf(oid);
  if (kind == ObjectKind::Record) return device.databaseStore.removeRecord(oid);
  if (kind == ObjectKind::Database) {
    device.databaseStore.remove(oid);
  } else if (kind == ObjectKind::File || kind == ObjectKind::Directory) {
    device.fileTree.remove(oid);
  } else {
    return device.objectModel.items().remove(oid);
  }
  return true;
}

}  // namespace

void loadDeleted(Device& device, const JsonNode& node) {
  node.forEachElement([&device](const JsonNode& entry) {
    if (!removeObject(device, readOid(entry))) entry.refuse("no object has this identifier");
  });
}

Json dumpDeleted(Device&) {
  return Json::array();
}

}  // namespace emulator
