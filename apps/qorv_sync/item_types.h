// The item types by the names that the command line has for them.
#pragma once

#include <array>
#include <string>

#include "desktop/wire.h"

namespace qorv_sync {

struct ItemTypeName {
  desktop::ItemType type;
  const char* name;
  bool isSupported;  ///< whether this version reads and writes such items
};

inline constexpr std::array kItemTypes{
    ItemTypeName{desktop::ItemType::Contact, "contacts", false},
    ItemTypeName{desktop::ItemType::Appointment, "appointments", true},
    ItemTypeName{desktop::ItemType::Task, "tasks", false},
    ItemTypeName{desktop::ItemType::Mail, "mail", false},
    ItemTypeName{desktop::ItemType::Note, "notes", false},
};

/// Throws InputError for a name that is no type's, and for a type that this version doesn't support.
desktop::ItemType supportedType(const std::string& name);

}  // namespace qorv_sync
