// Between the object model's numbers and the kinds of items.
#pragma once

#include <array>
#include <optional>

#include "emulator/store/object_kind.h"
#include "platform/outlook.h"

namespace emulator {

struct ModelNumbers {
  ObjectKind kind;
  int itemType;
  int folder;
};

inline constexpr std::array kModelNumbers{
    ModelNumbers{ObjectKind::Contact, olContactItem, olFolderContacts},
    ModelNumbers{ObjectKind::Appointment, olAppointmentItem, olFolderCalendar},
    ModelNumbers{ObjectKind::Task, olTaskItem, olFolderTasks},
};

constexpr std::optional<ObjectKind> kindOfItemType(int itemType) {
  for (const ModelNumbers& numbers : kModelNumbers) {
    if (numbers.itemType == itemType) return numbers.kind;
  }
  return std::nullopt;
}

constexpr std::optional<ObjectKind> kindOfFolder(int folder) {
  for (const ModelNumbers& numbers : kModelNumbers) {
    if (numbers.folder == folder) return numbers.kind;
  }
  return std::nullopt;
}

constexpr int itemTypeOf(ObjectKind kind) {
  for (const ModelNumbers& numbers : kModelNumbers) {
    if (numbers.kind == kind) return numbers.itemType;
  }
  return 0;
}

}  // namespace emulator
