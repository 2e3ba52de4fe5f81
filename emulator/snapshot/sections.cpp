#include "emulator/snapshot/sections.h"

#include <array>

#include "emulator/snapshot/section_handlers.h"

namespace emulator {
namespace {

constexpr std::array kSections{
    Section{"module", loadModule, dumpModule},
    Section{"os_version", loadOsVersion, dumpOsVersion},
    Section{"time_zone", loadTimeZone, dumpTimeZone},
    Section{"registry", loadRegistry, dumpRegistry},
    Section{"files", loadFiles, dumpFiles, "oid"},
    Section{"databases", loadDatabases, dumpDatabases, "oid", "records"},
    Section{"contacts", loadContacts, dumpContacts, "Oid"},
    Section{"appointments", loadAppointments, dumpAppointments, "Oid"},
    Section{"tasks", loadTasks, dumpTasks, "Oid"},
    Section{"mail", loadMail, dumpMail},
    Section{"deleted", loadDeleted, dumpDeleted},
};

}  // namespace

std::span<const Section> sections() {
  return kSections;
}

}  // namespace emulator
