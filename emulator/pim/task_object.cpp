#include "emulator/pim/task_object.h"

#include "emulator/pim/recurrence_pattern_object.h"

namespace emulator {

HRESULT TaskObject::GetRecurrencePattern(IRecurrencePattern** pattern) {
  return RecurrencePatternObject::make(core(), static_cast<ITask*>(this), pattern);
}

}  // namespace emulator
