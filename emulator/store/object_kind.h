// What an object identifier names.
#pragma once

#include <cstdint>

namespace emulator {

/// The first four are the numbers by which the platform's object information tells the kinds apart.
enum class ObjectKind : std::uint8_t {
  File = 1,
  Directory = 2,
  Database = 3,
  Record = 4,
  Contact = 5,
  Appointment = 6,
  Task = 7,
  Message = 8,
};

}  // namespace emulator
