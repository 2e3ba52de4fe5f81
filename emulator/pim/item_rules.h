// What the object model does with values that are put into an item, and with an item that is saved.
#pragma once

#include "emulator/pim/local_clock.h"
#include "emulator/pim/pim_item.h"
#include "platform/errors.h"

namespace emulator {

/// An item as a user of the device would begin it: an appointment starts with the next full hour.
PimItem newItem(ObjectKind kind, const LocalClock& clock);

/// From an appointment's start to its end; nothing, unless it has both.
double durationInDays(const ItemRecord& appointment);

/// Whether a time is one at which the appointment can end: in the years that it can start in; when it is an
/// all-day one, also at the midnight after them, which closes their last day.
bool canEndAt(const ItemRecord& appointment, double end);

/// Puts a value of the property's type. An appointment's start takes its end along, an end before the start
/// takes the start along, and completing a task dates the completion. On failure nothing changed:
/// E_FIELDTOOLARGE for a text that is too long, E_INVALIDARG for a number or date out of range, also
/// for one that would take the other date out of range.
HRESULT putProperty(ItemRecord& record, std::size_t place, PropertyValue value, const LocalClock& clock);

/// Makes a record what the device keeps of it: an all-day appointment spans whole days, a contact that has no
/// FileAs of its own gets one. E_INVALIDREMINDERTIME for a reminder before 1900-01-01, E_INVALIDDATES for an
/// appointment that ends when it cannot: see canEndAt.
HRESULT prepareForSave(ItemRecord& record);

/// The same for an item. E_INVALIDDATES also for a series of appointments without a start.
HRESULT prepareForSave(PimItem& item);

}  // namespace emulator
