#include "emulator/pim/item_factory.h"

#include "emulator/pim/appointment_object.h"
#include "emulator/pim/contact_object.h"
#include "emulator/pim/task_object.h"

namespace emulator {

IDispatch* makeItemObject(ModelContext& context, ObjectKind kind, Oid oid) {
  auto source = std::make_unique<StoredItem>(context.items, kind, oid);
  if (kind == ObjectKind::Contact)
    return static_cast<IContact*>(new ContactObject(context, std::move(source)));
  if (kind == ObjectKind::Task) return static_cast<ITask*>(new TaskObject(context, std::move(source)));
  return static_cast<IAppointment*>(new AppointmentObject(context, std::move(source)));
}

}  // namespace emulator
