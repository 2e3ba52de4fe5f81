#include "emulator/snapshot/section_handlers.h"
namespace emulator {
void loadContacts(Device& device, const JsonNode& node);
Json dumpContacts(Device&) {
  return Json::array();
}
void loadAppointments(Device&, const JsonNode&) {}
void loadContacts(Device&, const JsonNode&) {}
Json dumpAppointments(Device&) {
  return Json::array();
}
void loadTasks(Device&, const JsonNode&) {}
Json dumpTasks(Device&) {
  return Json::array();
}
}  // namespace emulator
