// The object model's recurrence pattern and the exceptions of a series.
#pragma once

#include "platform/com.h"

class IAppointment;
class IExceptions;
class IPOutlookApp;

inline constexpr LONG olRecursDaily = 0;
inline constexpr LONG olRecursWeekly = 1;
inline constexpr LONG olRecursMonthly = 2;
inline constexpr LONG olRecursMonthNth = 3;
inline constexpr LONG olRecursYearly = 5;
inline constexpr LONG olRecursYearNth = 6;

/// The pattern of an item; what is put takes effect with the item's Save. The type is put before its
/// parameters.
class IRecurrencePattern : public IDispatch {
 public:
  static constexpr IID kIid{0x38F47300, 0x270F, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  virtual HRESULT get_RecurrenceType(LONG* type) = 0;
  virtual HRESULT get_PatternStartDate(DATE* start) = 0;
  virtual HRESULT get_StartTime(DATE* time) = 0;
  virtual HRESULT get_EndTime(DATE* time) = 0;
  virtual HRESULT get_PatternEndDate(DATE* end) = 0;
  virtual HRESULT get_NoEndDate(VARIANT_BOOL* noEnd) = 0;
  virtual HRESULT get_Occurrences(LONG* occurrences) = 0;
  virtual HRESULT get_Interval(LONG* interval) = 0;
  virtual HRESULT get_DayOfWeekMask(LONG* mask) = 0;
  virtual HRESULT get_DayOfMonth(LONG* day) = 0;
  virtual HRESULT get_Instance(LONG* instance) = 0;
  virtual HRESULT get_Duration(LONG* minutes) = 0;
  virtual HRESULT get_MonthOfYear(LONG* month) = 0;

  virtual HRESULT put_RecurrenceType(LONG type) = 0;
  virtual HRESULT put_PatternStartDate(DATE start) = 0;
  virtual HRESULT put_StartTime(DATE time) = 0;
  virtual HRESULT put_EndTime(DATE time) = 0;
  /// Turns NoEndDate off; Occurrences is then computed on Save.
  virtual HRESULT put_PatternEndDate(DATE end) = 0;
  virtual HRESULT put_NoEndDate(VARIANT_BOOL noEnd) = 0;
  /// Turns NoEndDate off; PatternEndDate is then computed on Save.
  virtual HRESULT put_Occurrences(LONG occurrences) = 0;
  virtual HRESULT put_Interval(LONG interval) = 0;
  virtual HRESULT put_DayOfWeekMask(LONG mask) = 0;
  virtual HRESULT put_DayOfMonth(LONG day) = 0;
  virtual HRESULT put_Instance(LONG instance) = 0;
  virtual HRESULT put_Duration(LONG minutes) = 0;
  virtual HRESULT put_MonthOfYear(LONG month) = 0;

  virtual HRESULT get_Exceptions(IExceptions** exceptions) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;
  /// The occurrence of that local day; fails for a day without one, or whose occurrence was deleted or moved
  /// away.
  virtual HRESULT GetOccurrence(DATE day, IAppointment** occurrence) = 0;

 protected:
  ~IRecurrencePattern() = default;
};

class IException : public IDispatch {
 public:
  static constexpr IID kIid{0xB47398D0, 0x3B73, 0x11D2, {0x8F, 0x1B, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  /// Of a deleted occurrence there is none: a failure and null.
  virtual HRESULT get_AppointmentItem(IAppointment** appointment) = 0;
  /// The date that the occurrence had.
  virtual HRESULT get_OriginalDate(DATE* date) = 0;
  virtual HRESULT get_Deleted(VARIANT_BOOL* deleted) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;

 protected:
  ~IException() = default;
};

class IExceptions : public IDispatch {
 public:
  static constexpr IID kIid{0xB47398D1, 0x3B73, 0x11D2, {0x8F, 0x1B, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  /// Indices count from 1.
  virtual HRESULT Item(int index, IException** exception) = 0;
  virtual HRESULT get_Count(int* count) = 0;
  virtual HRESULT get__NewEnum(IUnknown** enumerator) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;

 protected:
  ~IExceptions() = default;
};
