#include "desktop/item_kind.h"

#include <array>

#include "desktop/overloaded.h"

namespace desktop {

namespace {

constexpr std::array kKinds{&kAppointmentKind, &kTaskKind, &kContactKind, &kNoteKind};

}  // namespace

std::span<const ItemKind* const> itemKinds() {
  return kKinds;
}

const ItemKind* kindOf(ItemType type) {
  for (const ItemKind* kind : kKinds) {
    if (kind->type == type) return kind;
  }
  return nullptr;
}

const ItemKind& kindOf(const Item& item) {
  return std::visit(Overloaded{
                        [](const Appointment&) -> const ItemKind& { return kAppointmentKind; },
                        [](const Contact&) -> const ItemKind& { return kContactKind; },
                        [](const Task&) -> const ItemKind& { return kTaskKind; },
                        [](const Note&) -> const ItemKind& { return kNoteKind; },
                    },
                    item);
}

}  // namespace desktop
