// The recurrence pattern of an appointment or task as the object model gives it.
#pragma once

#include "emulator/pim/com_object.h"
#include "emulator/pim/com_reference.h"
#include "emulator/pim/item_core.h"
#include "platform/recurrence.h"

namespace emulator {

/// A view of its item, which it keeps alive: two patterns of one item object see each other's puts, and the
/// item's Save stores them.
class RecurrencePatternObject final : public ComObject<IRecurrencePattern> {
 public:
  /// Gives the item a fresh rule when it has none.
  static HRESULT make(ItemCore& item, IUnknown* owner, IRecurrencePattern** pattern);

  HRESULT get_RecurrenceType(LONG* type) override;
  HRESULT get_PatternStartDate(DATE* start) override;
  HRESULT get_StartTime(DATE* time) override;
  HRESULT get_EndTime(DATE* time) override;
  HRESULT get_PatternEndDate(DATE* end) override;
  HRESULT get_NoEndDate(VARIANT_BOOL* noEnd) override;
  HRESULT get_Occurrences(LONG* occurrences) override;
  HRESULT get_Interval(LONG* interval) override;
  HRESULT get_DayOfWeekMask(LONG* mask) override;
  HRESULT get_DayOfMonth(LONG* day) override;
  HRESULT get_Instance(LONG* instance) override;
  HRESULT get_Duration(LONG* minutes) override;
  HRESULT get_MonthOfYear(LONG* month) override;

  HRESULT put_RecurrenceType(LONG type) override;
  HRESULT put_PatternStartDate(DATE start) override;
  HRESULT put_StartTime(DATE time) override;
  HRESULT put_EndTime(DATE time) override;
  HRESULT put_PatternEndDate(DATE end) override;
  HRESULT put_NoEndDate(VARIANT_BOOL noEnd) override;
  HRESULT put_Occurrences(LONG occurrences) override;
  HRESULT put_Interval(LONG interval) override;
  HRESULT put_DayOfWeekMask(LONG mask) override;
  HRESULT put_DayOfMonth(LONG day) override;
  HRESULT put_Instance(LONG instance) override;
  HRESULT put_Duration(LONG minutes) override;
  HRESULT put_MonthOfYear(LONG month) override;

  HRESULT get_Exceptions(IExceptions** exceptions) override;
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }
  HRESULT GetOccurrence(DATE day, IAppointment** occurrence) override;

 private:
  RecurrencePatternObject(ItemCore& item, IUnknown* owner);

  template <typename Out, typename Read>
  HRESULT read(Out* out, Read read);
  template <typename Change>
  HRESULT change(Change change);
  template <typename Put>
  HRESULT changeTime(Put put);
  HRESULT putNumber(std::int32_t RecurrenceRule::*parameter, LONG value, LONG greatest);

  ItemCore& item_;
  ComReference<IUnknown> owner_;
};

}  // namespace emulator
