// "deleted": identifiers of objects that go. A folder goes with what is in it.
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

void removeObject(Device& device, const JsonNode& node) {
  const Oid oid = readOid(node);
  const auto kind = device.store.kindOf(oid);
  if (!kind) node.refuse("no object has this identifier");
  if (*kind == ObjectKind::File || *kind == ObjectKind::Directory) {
    device.fileTree.remove(oid);
  }
}

}  // namespace

void loadDeleted(Device& device, const JsonNode& node) {
  node.forEachElement([&device](const JsonNode& oid) { removeObject(device, oid); });
}

Json dumpDeleted(Device&) {
  return Json::array();
}

}  // namespace emulator
