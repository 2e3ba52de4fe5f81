// All interfaces of the platform.
#pragma once

#include "emulator/calls/interfaces_calendar.h"
#include "emulator/calls/interfaces_com.h"
#include "emulator/calls/interfaces_contact.h"
#include "emulator/calls/interfaces_messaging.h"
#include "emulator/calls/interfaces_outlook.h"

namespace emulator {

template <typename... T>
struct TypeList {};

using Interfaces = TypeList<IUnknown, IDispatch, ISequentialStream, IStream, IRAPIStream, IContact,
                            IAppointment, ITask, IRecurrencePattern, IException, IExceptions, IPOutlookApp,
                            IFolder, IPOutlookItemCollection, IItem, IMAPIProp, IMsgStore, IMAPIContainer,
                            IMAPIFolder, IMessage, IAttach, IMAPITable, IMAPISession>;

}  // namespace emulator
