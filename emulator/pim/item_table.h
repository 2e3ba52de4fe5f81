// The three kinds of items, each with its table of properties.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "emulator/pim/appointment_properties.h"
#include "emulator/pim/contact_properties.h"
#include "emulator/pim/property.h"
#include "emulator/pim/task_properties.h"
#include "emulator/store/object_kind.h"

namespace emulator {

struct ItemTable {
  ObjectKind kind;
  std::string_view name;                 ///< of the table in the device file
  std::span<const Property> properties;  ///< at most ItemRecord's limit
  std::string_view order;                ///< of the folder, as the device file's queries say it
};

inline constexpr ItemTable kContactTable{ObjectKind::Contact, "contact", kContactProperties,
                                         "FileAs COLLATE NOCASE, oid"};
inline constexpr ItemTable kAppointmentTable{ObjectKind::Appointment, "appointment", kAppointmentProperties,
                                             "Start, oid"};
inline constexpr ItemTable kTaskTable{ObjectKind::Task, "task", kTaskProperties, "oid"};

inline constexpr std::array<const ItemTable*, 3> kItemTables{&kContactTable, &kAppointmentTable, &kTaskTable};

constexpr bool isItem(ObjectKind kind) {
  return kind == ObjectKind::Contact || kind == ObjectKind::Appointment || kind == ObjectKind::Task;
}

/// The table of an item's kind.
constexpr const ItemTable& tableOf(ObjectKind kind) {
  if (kind == ObjectKind::Contact) return kContactTable;
  return kind == ObjectKind::Appointment ? kAppointmentTable : kTaskTable;
}

}  // namespace emulator
