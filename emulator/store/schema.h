// The tables of a device file, made once when the device is created.
#pragma once

#include "emulator/store/sqlite.h"

namespace emulator {

/// "QORV": tells a device file from every other SQLite file.
inline constexpr std::int32_t kApplicationId = 0x514F5256;

/// The tables' version. A file with a higher one was made by a newer version of this program.
inline constexpr std::int32_t kSchemaVersion = 1;

/// Makes every subsystem's tables in an empty file. Throws StoreError.
void createSchema(Connection& connection);

}  // namespace emulator
