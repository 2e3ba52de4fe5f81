// The item types by the names that the command line has for them.
#pragma once

#include <array>
#include <string>

#include "desktop/item_kind.h"
#include "desktop/wire.h"

namespace qorv_sync {

struct ItemTypeName {
  desktop::ItemType type;
  const char* name;
};

/// All that the protocol knows, whether this version carries them or not.
inline constexpr std::array kItemTypes{
    ItemTypeName{desktop::ItemType::Contact, "contacts"},
    ItemTypeName{desktop::ItemType::Appointment, "appointments"},
    ItemTypeName{desktop::ItemType::Task, "tasks"},
    ItemTypeName{desktop::ItemType::Mail, "mail"},
    ItemTypeName{desktop::ItemType::Note, "notes"},
};

/// Throws InputError for a name that is no type's.
desktop::ItemType typeNamed(const std::string& name);

/// Throws InputError for a name that is no type's, and for a type that this version doesn't carry.
const desktop::ItemKind& kindNamed(const std::string& name);

/// "appointments, contacts or tasks": the types that this version carries, for a command's help.
std::string spellKinds();

}  // namespace qorv_sync
