// "databases": known, but this version of the emulated device has no store for them.
#include "emulator/snapshot/section_handlers.h"

namespace emulator {
namespace {

void requireEmpty(const JsonNode& list, const char* what) {
  list.forEachElement([what](const JsonNode& entry) {
    entry.refuse(std::string(what) + " are not supported by this version");
  });
}

}  // namespace

void loadDatabases(Device&, const JsonNode& node) {
  requireEmpty(node, "databases");
}

Json dumpDatabases(Device&) {
  return Json::array();
}

}  // namespace emulator
