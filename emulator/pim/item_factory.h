// Makes the object of an item.
#pragma once

#include "emulator/pim/model_context.h"
#include "platform/com.h"

namespace emulator {

/// An IContact, IAppointment or ITask with one reference, the caller's. Identifier 0 begins a new item; for
/// another one nothing is read from the device file before a property is asked for.
IDispatch* makeItemObject(ModelContext& context, ObjectKind kind, Oid oid);

}  // namespace emulator
