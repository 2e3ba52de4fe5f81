#include "emulator/store/schema.h"

#include <array>
#include <span>
#include <string>

#include "emulator/database/database_schema.h"
#include "emulator/pim/item_schema.h"
#include "emulator/store/store_schema.h"
#include "emulator/system/file_schema.h"
#include "emulator/system/registry_schema.h"

namespace emulator {
namespace {

struct Subsystem {
  std::span<const char* const> statements;
  std::int32_t since;  ///< the version that has them first
};

/// A subsystem brings its tables as one array of statements and one entry here.
constexpr std::array kSubsystems{
    Subsystem{kStoreSchema, 1}, Subsystem{kRegistrySchema, 1}, Subsystem{kFileSchema, 1},
    Subsystem{kItemSchema, 1},  Subsystem{kDatabaseSchema, 2},
};

}  // namespace

void completeSchema(Connection& connection, std::int32_t version) {
  for (const Subsystem& subsystem : kSubsystems) {
    if (subsystem.since <= version) continue;
    for (const char* statement : subsystem.statements) connection.execute(statement);
  }
  connection.execute(("PRAGMA application_id = " + std::to_string(kApplicationId)).c_str());
  connection.execute(("PRAGMA user_version = " + std::to_string(kSchemaVersion)).c_str());
}

}  // namespace emulator
