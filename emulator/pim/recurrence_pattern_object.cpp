#include "emulator/pim/recurrence_pattern_object.h"

#include <limits>

#include "emulator/pim/appointment_object.h"
#include "emulator/pim/appointment_times.h"
#include "emulator/pim/exceptions_object.h"
#include "emulator/pim/occurrence.h"
#include "emulator/pim/recurrence_puts.h"
#include "emulator/pim/recurrence_series.h"
#include "emulator/pim/variant_time.h"
#include "platform/outlook.h"

namespace emulator {

HRESULT RecurrencePatternObject::make(ItemCore& core, IUnknown* owner, IRecurrencePattern** pattern) {
  if (pattern == nullptr) return E_POINTER;
  *pattern = nullptr;
  return atBoundary([&] {
    PimItem* item = core.item();
    if (item == nullptr) return E_FAIL;
    if (!item->rule) setRule(*item, freshRule(item->properties, core.context().clock));
    *pattern = new RecurrencePatternObject(core, owner);
    return S_OK;
  });
}

RecurrencePatternObject::RecurrencePatternObject(ItemCore& item, IUnknown* owner)
    : ComObject(item.context().live, ModelClass::RecurrencePattern), item_(item), owner_(owner) {}

// Fails once the item's recurrence was cleared.
template <typename Out, typename Read>
HRESULT RecurrencePatternObject::read(Out* out, Read read) {
  if (out == nullptr) return E_POINTER;
  return atBoundary([&] {
    const PimItem* item = item_.item();
    if (item == nullptr || !item->rule) return E_FAIL;
    *out = static_cast<Out>(read(*item, *item->rule));
    return S_OK;
  });
}

// `change` alters a copy of the rule; its result says whether the exceptions stay in any case.
template <typename Change>
HRESULT RecurrencePatternObject::change(Change change) {
  return atBoundary([&] {
    PimItem* item = item_.item();
    if (item == nullptr || !item->rule) return E_FAIL;
    RecurrenceRule rule = *item->rule;
    const bool keepsExceptions = change(rule);
    setRule(*item, rule, keepsExceptions);
    return S_OK;
  });
}

// Times of day belong to appointments only.
template <typename Put>
HRESULT RecurrencePatternObject::changeTime(Put put) {
  if (item_.kind() != ObjectKind::Appointment) return E_NOTIMPL;
  return atBoundary([&] {
    PimItem* item = item_.item();
    if (item == nullptr || !item->rule) return E_FAIL;
    const ItemRecord before = item->properties;
    const HRESULT result = put(item_.context().items, item->properties);
    const bool isSame = before.value(kStart) == item->properties.value(kStart) &&
                        before.value(kEnd) == item->properties.value(kEnd);
    if (SUCCEEDED(result) && !isSame) item->exceptionsDropped = true;
    return result;
  });
}

HRESULT RecurrencePatternObject::putNumber(std::int32_t RecurrenceRule::*parameter, LONG value,
                                           LONG greatest) {
  if (value < 1 || value > greatest) return E_INVALIDARG;
  return change([&](RecurrenceRule& rule) {
    rule.*parameter = value;
    return false;
  });
}

HRESULT RecurrencePatternObject::get_RecurrenceType(LONG* type) {
  return read(type, [](const PimItem&, const RecurrenceRule& rule) { return static_cast<LONG>(rule.type); });
}

HRESULT RecurrencePatternObject::get_PatternStartDate(DATE* start) {
  return read(start,
              [](const PimItem&, const RecurrenceRule& rule) { return static_cast<double>(rule.start); });
}

HRESULT RecurrencePatternObject::get_StartTime(DATE* time) {
  if (item_.kind() != ObjectKind::Appointment) return E_NOTIMPL;
  return read(time, [](const PimItem& item, const RecurrenceRule&) {
    return timeOfDayAt(item.properties.get<double>(kStart));
  });
}

HRESULT RecurrencePatternObject::get_EndTime(DATE* time) {
  if (item_.kind() != ObjectKind::Appointment) return E_NOTIMPL;
  return read(time, [](const PimItem& item, const RecurrenceRule&) {
    return timeOfDayAt(item.properties.get<double>(kEnd));
  });
}

HRESULT RecurrencePatternObject::get_PatternEndDate(DATE* end) {
  return read(end, [](const PimItem&, const RecurrenceRule& rule) {
    const std::optional<Day> day = endDayOf(rule);
    return day ? static_cast<double>(*day) : kNoDate;
  });
}

HRESULT RecurrencePatternObject::get_NoEndDate(VARIANT_BOOL* noEnd) {
  return read(noEnd, [](const PimItem&, const RecurrenceRule& rule) {
    return rule.end == SeriesEnd::Never ? VARIANT_TRUE : VARIANT_FALSE;
  });
}

HRESULT RecurrencePatternObject::get_Occurrences(LONG* occurrences) {
  return read(occurrences, [](const PimItem&, const RecurrenceRule& rule) {
    return rule.end == SeriesEnd::Never ? 0 : statedCount(rule);
  });
}

HRESULT RecurrencePatternObject::get_Interval(LONG* interval) {
  return read(interval, [](const PimItem&, const RecurrenceRule& rule) { return rule.interval; });
}

HRESULT RecurrencePatternObject::get_DayOfWeekMask(LONG* mask) {
  return read(mask, [](const PimItem&, const RecurrenceRule& rule) { return rule.dayMask; });
}

HRESULT RecurrencePatternObject::get_DayOfMonth(LONG* day) {
  return read(day, [](const PimItem&, const RecurrenceRule& rule) { return rule.dayOfMonth; });
}

HRESULT RecurrencePatternObject::get_Instance(LONG* instance) {
  return read(instance, [](const PimItem&, const RecurrenceRule& rule) { return rule.instance; });
}

HRESULT RecurrencePatternObject::get_Duration(LONG* minutes) {
  if (item_.kind() != ObjectKind::Appointment) return E_NOTIMPL;
  return read(minutes,
              [](const PimItem& item, const RecurrenceRule&) { return durationInMinutes(item.properties); });
}

HRESULT RecurrencePatternObject::get_MonthOfYear(LONG* month) {
  return read(month, [](const PimItem&, const RecurrenceRule& rule) { return rule.monthOfYear; });
}

HRESULT RecurrencePatternObject::put_RecurrenceType(LONG type) {
  if (!isRecurrenceType(type)) return E_INVALIDARG;
  return change([&](RecurrenceRule& rule) {
    const auto wanted = static_cast<RecurrenceType>(type);
    if (rule.type != wanted) rule = retyped(rule, wanted);
    return false;
  });
}

HRESULT RecurrencePatternObject::put_PatternStartDate(DATE start) {
  if (!isInCalendar(start, kFirstPlannedDay)) return E_INVALIDARG;
  return change([&](RecurrenceRule& rule) {
    rule.start = dayAt(start);
    return false;
  });
}

HRESULT RecurrencePatternObject::put_StartTime(DATE time) {
  return changeTime(
      [&](const PimItems& items, ItemRecord& record) { return putStartTime(items, record, time); });
}

HRESULT RecurrencePatternObject::put_EndTime(DATE time) {
  return changeTime(
      [&](const PimItems& items, ItemRecord& record) { return putEndTime(items, record, time); });
}

// A value that the pattern has already, put or computed, decides how the series ends and changes nothing
// else.
HRESULT RecurrencePatternObject::put_PatternEndDate(DATE end) {
  if (!isInCalendar(end, kFirstPlannedDay)) return E_INVALIDARG;
  return change([&](RecurrenceRule& rule) {
    const bool isEqual = endDayOf(rule) == dayAt(end);
    rule.end = SeriesEnd::OnDate;
    rule.endDate = dayAt(end);
    return isEqual;
  });
}

HRESULT RecurrencePatternObject::put_NoEndDate(VARIANT_BOOL noEnd) {
  return change([&](RecurrenceRule& rule) {
    if (noEnd != VARIANT_FALSE) {
      rule.end = SeriesEnd::Never;
    } else if (rule.end == SeriesEnd::Never) {
      rule = ending(rule);
    }
    return false;
  });
}

HRESULT RecurrencePatternObject::put_Occurrences(LONG occurrences) {
  if (occurrences < 1) return E_INVALIDARG;
  return change([&](RecurrenceRule& rule) {
    const bool isEqual = rule.end != SeriesEnd::Never && statedCount(rule) == occurrences;
    rule.end = SeriesEnd::AfterCount;
    rule.count = occurrences;
    return isEqual;
  });
}

HRESULT RecurrencePatternObject::put_Interval(LONG interval) {
  return putNumber(&RecurrenceRule::interval, interval, std::numeric_limits<LONG>::max());
}

HRESULT RecurrencePatternObject::put_DayOfWeekMask(LONG mask) {
  return putNumber(&RecurrenceRule::dayMask, mask, kEveryWeekday);
}

HRESULT RecurrencePatternObject::put_DayOfMonth(LONG day) {
  return putNumber(&RecurrenceRule::dayOfMonth, day, kLongestMonth);
}

HRESULT RecurrencePatternObject::put_Instance(LONG instance) {
  return putNumber(&RecurrenceRule::instance, instance, kLastInstance);
}

HRESULT RecurrencePatternObject::put_Duration(LONG minutes) {
  return changeTime(
      [&](const PimItems& items, ItemRecord& record) { return putDuration(items, record, minutes); });
}

HRESULT RecurrencePatternObject::put_MonthOfYear(LONG month) {
  return putNumber(&RecurrenceRule::monthOfYear, month, kMonthsPerYear);
}

HRESULT RecurrencePatternObject::get_Exceptions(IExceptions** exceptions) {
  if (exceptions == nullptr) return E_POINTER;
  *exceptions = nullptr;
  return atBoundary([&] {
    *exceptions = new ExceptionsObject(item_, owner_.get());
    return S_OK;
  });
}

// Occurrences are those of the series as it was saved.
HRESULT RecurrencePatternObject::GetOccurrence(DATE date, IAppointment** occurrence) {
  if (occurrence == nullptr) return E_POINTER;
  *occurrence = nullptr;
  if (item_.kind() != ObjectKind::Appointment || !isInCalendar(date, kFirstDay)) return E_INVALIDARG;
  return atBoundary([&] {
    PimItems& items = item_.context().items;
    const Day day = dayAt(date);
    const std::optional<PimItem> series = items.load(ObjectKind::Appointment, item_.oid());
    if (!series || !hasOccurrenceOn(*series, items.exceptionOf(*series, day), day)) return E_FAIL;
    *occurrence =
        new AppointmentObject(item_.context(), std::make_unique<OccurrenceOfSeries>(items, item_.oid(), day));
    return S_OK;
  });
}

}  // namespace emulator
