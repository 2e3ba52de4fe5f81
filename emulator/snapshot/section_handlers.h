// What the rows of the table of sections call: loaders and dumpers, a file for each section.
#pragma once

#include "emulator/device.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

void loadModule(Device& device, const JsonNode& node);
Json dumpModule(Device& device);
void loadOsVersion(Device& device, const JsonNode& node);
Json dumpOsVersion(Device& device);
void loadTimeZone(Device& device, const JsonNode& node);
Json dumpTimeZone(Device& device);
void loadRegistry(Device& device, const JsonNode& node);
Json dumpRegistry(Device& device);
void loadFiles(Device& device, const JsonNode& node);
Json dumpFiles(Device& device);
void loadDatabases(Device& device, const JsonNode& node);
Json dumpDatabases(Device& device);
void loadContacts(Device& device, const JsonNode& node);
Json dumpContacts(Device& device);
void loadAppointments(Device& device, const JsonNode& node);
Json dumpAppointments(Device& device);
void loadTasks(Device& device, const JsonNode& node);
Json dumpTasks(Device& device);
void loadMail(Device& device, const JsonNode& node);
Json dumpMail(Device& device);
/// Keeps the identifiers that the section's entries choose free for them.
void reserveMessages(Device& device, const JsonNode& node);
void loadDeleted(Device& device, const JsonNode& node);
Json dumpDeleted(Device& device);

}  // namespace emulator
