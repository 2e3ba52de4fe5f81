#include "emulator/store/schema.h"

#include <array>
#include <span>
#include <string>

#include "emulator/messaging/mail_schema.h"
#include "emulator/pim/item_schema.h"
#include "emulator/store/store_schema.h"
#include "emulator/system/file_schema.h"
#include "emulator/system/registry_schema.h"

namespace emulator {
namespace {

using Statements = std::span<const char* const>;

/// A subsystem brings its tables as one array of statements and one entry here.
constexpr std::array kSubsystems{
    Statements(kStoreSchema), Statements(kRegistrySchema), Statements(kFileSchema),
    Statements(kItemSchema),  Statements(kMailSchema),
};

}  // namespace

void createSchema(Connection& connection) {
  for (const Statements& statements : kSubsystems) {
    for (const char* statement : statements) connection.execute(statement);
  }
  connection.execute(("PRAGMA application_id = " + std::to_string(kApplicationId)).c_str());
  connection.execute(("PRAGMA user_version = " + std::to_string(kSchemaVersion)).c_str());
}

}  // namespace emulator
