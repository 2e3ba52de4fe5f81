// The object model's task.
#pragma once

#include "platform/com.h"
#include "platform/property_database.h"

class IPOutlookApp;
class IRecurrencePattern;

/// Puts are held until Save. Texts that getters hand out are freed with IPOutlookApp::SysFreeString.
/// Dates that are not set read as kNoDate.
class ITask : public IDispatch {
 public:
  static constexpr IID kIid{0x37C78CE0, 0x202C, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  virtual HRESULT ClearRecurrencePattern() = 0;
  virtual HRESULT GetRecurrencePattern(IRecurrencePattern** pattern) = 0;
  virtual HRESULT get_IsRecurring(VARIANT_BOOL* recurring) = 0;
  virtual HRESULT get_Subject(BSTR* subject) = 0;
  virtual HRESULT get_Categories(BSTR* categories) = 0;
  virtual HRESULT get_StartDate(DATE* start) = 0;
  virtual HRESULT get_DueDate(DATE* due) = 0;
  virtual HRESULT get_DateCompleted(DATE* completed) = 0;
  virtual HRESULT get_Importance(LONG* importance) = 0;
  virtual HRESULT get_Complete(VARIANT_BOOL* complete) = 0;
  virtual HRESULT get_Sensitivity(LONG* sensitivity) = 0;
  virtual HRESULT get_TeamTask(VARIANT_BOOL* teamTask) = 0;
  virtual HRESULT get_Body(BSTR* body) = 0;
  virtual HRESULT get_ReminderSet(VARIANT_BOOL* set) = 0;
  virtual HRESULT get_ReminderSoundFile(BSTR* file) = 0;
  virtual HRESULT get_ReminderTime(DATE* time) = 0;
  virtual HRESULT get_ReminderOptions(LONG* options) = 0;

  virtual HRESULT put_Subject(BSTR subject) = 0;
  virtual HRESULT put_Categories(BSTR categories) = 0;
  virtual HRESULT put_StartDate(DATE start) = 0;
  virtual HRESULT put_DueDate(DATE due) = 0;
  virtual HRESULT put_Importance(LONG importance) = 0;
  /// Completing sets DateCompleted to today.
  virtual HRESULT put_Complete(VARIANT_BOOL complete) = 0;
  virtual HRESULT put_Sensitivity(LONG sensitivity) = 0;
  virtual HRESULT put_TeamTask(VARIANT_BOOL teamTask) = 0;
  virtual HRESULT put_Body(BSTR body) = 0;
  virtual HRESULT put_ReminderSet(VARIANT_BOOL set) = 0;
  virtual HRESULT put_ReminderSoundFile(BSTR file) = 0;
  virtual HRESULT put_ReminderTime(DATE time) = 0;
  virtual HRESULT put_ReminderOptions(LONG options) = 0;

  virtual HRESULT Save() = 0;
  virtual HRESULT Delete() = 0;
  virtual HRESULT SkipRecurrence() = 0;
  virtual HRESULT Copy(ITask** copy) = 0;
  virtual HRESULT Display() = 0;
  /// 0 before the first save.
  virtual HRESULT get_Oid(LONG* oid) = 0;
  virtual HRESULT put_BodyInk(CEBLOB* ink) = 0;
  virtual HRESULT get_BodyInk(CEBLOB* ink) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;

 protected:
  ~ITask() = default;
};
