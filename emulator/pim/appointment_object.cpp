#include "emulator/pim/appointment_object.h"

#include "emulator/pim/appointment_times.h"
#include "emulator/pim/recurrence_pattern_object.h"

namespace emulator {

HRESULT AppointmentObject::GetRecurrencePattern(IRecurrencePattern** pattern) {
  return RecurrencePatternObject::make(core(), static_cast<IAppointment*>(this), pattern);
}

HRESULT AppointmentObject::get_Duration(LONG* minutes) {
  if (minutes == nullptr) return E_POINTER;
  return atBoundary([&] {
    const PimItem* item = core().item();
    if (item == nullptr) return E_FAIL;
    *minutes = durationInMinutes(item->properties);
    return S_OK;
  });
}

HRESULT AppointmentObject::put_Duration(LONG minutes) {
  return atBoundary([&] {
    PimItem* item = core().item();
    return item == nullptr ? E_FAIL : putDuration(core().context().items, item->properties, minutes);
  });
}

}  // namespace emulator
