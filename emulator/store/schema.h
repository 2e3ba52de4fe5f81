// The tables of a device file: made when the device is created, and completed when a newer program opens it.
#pragma once

#include "emulator/store/sqlite.h"

namespace emulator {

/// "QORV": tells a device file from every other SQLite file.
inline constexpr std::int32_t kApplicationId = 0x514F5256;

/// The tables' version. A file with a higher one was made by a newer version of this program.
inline constexpr std::int32_t kSchemaVersion = 2;

/// Makes the tables that a file of an earlier version lacks, or all of them in an empty file, whose version is
/// 0. Throws StoreError.
void completeSchema(Connection& connection, std::int32_t version);

}  // namespace emulator
