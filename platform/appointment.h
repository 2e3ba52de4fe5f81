// The object model's appointment.
#pragma once

#include "platform/com.h"
#include "platform/property_database.h"

class IPOutlookApp;
class IRecipients;
class IRecurrencePattern;

/// Puts are held until Save. Texts that getters hand out are freed with IPOutlookApp::SysFreeString.
/// An occurrence of a series is an IAppointment too; saving or deleting it makes an exception of its series.
class IAppointment : public IDispatch {
 public:
  static constexpr IID kIid{0x5B43F691, 0x202C, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  /// Makes the item single and drops its exceptions; succeeds on a single item.
  virtual HRESULT ClearRecurrencePattern() = 0;
  /// Works on a single item too: it is the way to make one recur.
  virtual HRESULT GetRecurrencePattern(IRecurrencePattern** pattern) = 0;
  virtual HRESULT get_IsRecurring(VARIANT_BOOL* recurring) = 0;
  virtual HRESULT get_Subject(BSTR* subject) = 0;
  virtual HRESULT get_Location(BSTR* location) = 0;
  virtual HRESULT get_Categories(BSTR* categories) = 0;
  virtual HRESULT get_Start(DATE* start) = 0;
  virtual HRESULT get_Duration(LONG* minutes) = 0;
  /// Of an all-day item the midnight after its last day.
  virtual HRESULT get_End(DATE* end) = 0;
  virtual HRESULT get_AllDayEvent(VARIANT_BOOL* allDay) = 0;
  virtual HRESULT get_BusyStatus(LONG* status) = 0;
  virtual HRESULT get_Sensitivity(LONG* sensitivity) = 0;
  virtual HRESULT get_Body(BSTR* body) = 0;
  virtual HRESULT get_Recipients(IRecipients** recipients) = 0;
  virtual HRESULT get_MeetingStatus(LONG* status) = 0;
  virtual HRESULT get_ReminderSet(VARIANT_BOOL* set) = 0;
  virtual HRESULT get_ReminderSoundFile(BSTR* file) = 0;
  virtual HRESULT get_ReminderMinutesBeforeStart(LONG* minutes) = 0;
  virtual HRESULT get_ReminderOptions(LONG* options) = 0;

  virtual HRESULT put_Subject(BSTR subject) = 0;
  virtual HRESULT put_Location(BSTR location) = 0;
  virtual HRESULT put_Categories(BSTR categories) = 0;
  /// Moves End along.
  virtual HRESULT put_Start(DATE start) = 0;
  virtual HRESULT put_Duration(LONG minutes) = 0;
  /// An end before the start moves the start.
  virtual HRESULT put_End(DATE end) = 0;
  virtual HRESULT put_AllDayEvent(VARIANT_BOOL allDay) = 0;
  virtual HRESULT put_BusyStatus(LONG status) = 0;
  virtual HRESULT put_Sensitivity(LONG sensitivity) = 0;
  virtual HRESULT put_Body(BSTR body) = 0;
  virtual HRESULT put_ReminderSet(VARIANT_BOOL set) = 0;
  virtual HRESULT put_ReminderSoundFile(BSTR file) = 0;
  virtual HRESULT put_ReminderMinutesBeforeStart(LONG minutes) = 0;
  virtual HRESULT put_ReminderOptions(LONG options) = 0;

  /// E_INVALIDREMINDERTIME when the reminder's moment lies outside what the device can hold.
  virtual HRESULT Save() = 0;
  virtual HRESULT Send() = 0;
  virtual HRESULT Delete() = 0;
  virtual HRESULT Cancel() = 0;
  virtual HRESULT Copy(IAppointment** copy) = 0;
  virtual HRESULT Display() = 0;
  /// 0 before the first save.
  virtual HRESULT get_Oid(LONG* oid) = 0;
  virtual HRESULT put_BodyInk(CEBLOB* ink) = 0;
  virtual HRESULT get_BodyInk(CEBLOB* ink) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;

 protected:
  ~IAppointment() = default;
};
