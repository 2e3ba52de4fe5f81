// An appointment, a series or an occurrence of one, as the object model gives it.
#pragma once

#include "emulator/pim/appointment_properties.h"
#include "emulator/pim/item_object.h"
#include "platform/appointment.h"

namespace emulator {

class AppointmentObject final : public ItemObject<IAppointment, kAppointmentProperties> {
 public:
  AppointmentObject(ModelContext& context, std::unique_ptr<ItemSource> source)
      : ItemObject(context, ModelClass::Appointment, ObjectKind::Appointment, std::move(source)) {}

  HRESULT ClearRecurrencePattern() override { return core().clearRecurrence(); }
  HRESULT GetRecurrencePattern(IRecurrencePattern** pattern) override;
  HRESULT get_IsRecurring(VARIANT_BOOL* out) override { return core().getRecurring(out); }
  HRESULT get_Duration(LONG* minutes) override;
  HRESULT put_Duration(LONG minutes) override;

  HRESULT get_Subject(BSTR* out) override { return get<"Subject">(out); }
  HRESULT get_Location(BSTR* out) override { return get<"Location">(out); }
  HRESULT get_Categories(BSTR* out) override { return get<"Categories">(out); }
  HRESULT get_Start(DATE* out) override { return get<"Start">(out); }
  HRESULT get_End(DATE* out) override { return get<"End">(out); }
  HRESULT get_AllDayEvent(VARIANT_BOOL* out) override { return get<"AllDayEvent">(out); }
  HRESULT get_BusyStatus(LONG* out) override { return get<"BusyStatus">(out); }
  HRESULT get_Sensitivity(LONG* out) override { return get<"Sensitivity">(out); }
  HRESULT get_Body(BSTR* out) override { return get<"Body">(out); }
  HRESULT get_MeetingStatus(LONG* out) override { return get<"MeetingStatus">(out); }
  HRESULT get_ReminderSet(VARIANT_BOOL* out) override { return get<"ReminderSet">(out); }
  HRESULT get_ReminderSoundFile(BSTR* out) override { return get<"ReminderSoundFile">(out); }
  HRESULT get_ReminderMinutesBeforeStart(LONG* out) override {
    return get<"ReminderMinutesBeforeStart">(out);
  }
  HRESULT get_ReminderOptions(LONG* out) override { return get<"ReminderOptions">(out); }

  HRESULT put_Subject(BSTR in) override { return put<"Subject">(in); }
  HRESULT put_Location(BSTR in) override { return put<"Location">(in); }
  HRESULT put_Categories(BSTR in) override { return put<"Categories">(in); }
  HRESULT put_Start(DATE in) override { return put<"Start">(in); }
  HRESULT put_End(DATE in) override { return put<"End">(in); }
  HRESULT put_AllDayEvent(VARIANT_BOOL in) override { return put<"AllDayEvent">(in); }
  HRESULT put_BusyStatus(LONG in) override { return put<"BusyStatus">(in); }
  HRESULT put_Sensitivity(LONG in) override { return put<"Sensitivity">(in); }
  HRESULT put_Body(BSTR in) override { return put<"Body">(in); }
  HRESULT put_ReminderSet(VARIANT_BOOL in) override { return put<"ReminderSet">(in); }
  HRESULT put_ReminderSoundFile(BSTR in) override { return put<"ReminderSoundFile">(in); }
  HRESULT put_ReminderMinutesBeforeStart(LONG in) override { return put<"ReminderMinutesBeforeStart">(in); }
  HRESULT put_ReminderOptions(LONG in) override { return put<"ReminderOptions">(in); }

  HRESULT get_Recipients(IRecipients**) override { return E_NOTIMPL; }
  HRESULT Send() override { return E_NOTIMPL; }
  HRESULT Cancel() override { return E_NOTIMPL; }
};

}  // namespace emulator
