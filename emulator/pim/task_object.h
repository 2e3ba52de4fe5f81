// A task as the object model gives it.
#pragma once

#include "emulator/pim/item_object.h"
#include "emulator/pim/task_properties.h"
#include "platform/task.h"

namespace emulator {

class TaskObject final : public ItemObject<ITask, kTaskProperties> {
 public:
  TaskObject(ModelContext& context, std::unique_ptr<ItemSource> source)
      : ItemObject(context, ModelClass::Task, ObjectKind::Task, std::move(source)) {}

  HRESULT ClearRecurrencePattern() override { return core().clearRecurrence(); }
  HRESULT GetRecurrencePattern(IRecurrencePattern** pattern) override;
  HRESULT get_IsRecurring(VARIANT_BOOL* out) override { return core().getRecurring(out); }
  HRESULT SkipRecurrence() override { return E_NOTIMPL; }

  HRESULT get_Subject(BSTR* out) override { return get<"Subject">(out); }
  HRESULT get_Categories(BSTR* out) override { return get<"Categories">(out); }
  HRESULT get_StartDate(DATE* out) override { return get<"StartDate">(out); }
  HRESULT get_DueDate(DATE* out) override { return get<"DueDate">(out); }
  HRESULT get_DateCompleted(DATE* out) override { return get<"DateCompleted">(out); }
  HRESULT get_Importance(LONG* out) override { return get<"Importance">(out); }
  HRESULT get_Complete(VARIANT_BOOL* out) override { return get<"Complete">(out); }
  HRESULT get_Sensitivity(LONG* out) override { return get<"Sensitivity">(out); }
  HRESULT get_TeamTask(VARIANT_BOOL* out) override { return get<"TeamTask">(out); }
  HRESULT get_Body(BSTR* out) override { return get<"Body">(out); }
  HRESULT get_ReminderSet(VARIANT_BOOL* out) override { return get<"ReminderSet">(out); }
  HRESULT get_ReminderSoundFile(BSTR* out) override { return get<"ReminderSoundFile">(out); }
  HRESULT get_ReminderTime(DATE* out) override { return get<"ReminderTime">(out); }
  HRESULT get_ReminderOptions(LONG* out) override { return get<"ReminderOptions">(out); }

  HRESULT put_Subject(BSTR in) override { return put<"Subject">(in); }
  HRESULT put_Categories(BSTR in) override { return put<"Categories">(in); }
  HRESULT put_StartDate(DATE in) override { return put<"StartDate">(in); }
  HRESULT put_DueDate(DATE in) override { return put<"DueDate">(in); }
  HRESULT put_Importance(LONG in) override { return put<"Importance">(in); }
  HRESULT put_Complete(VARIANT_BOOL in) override { return put<"Complete">(in); }
  HRESULT put_Sensitivity(LONG in) override { return put<"Sensitivity">(in); }
  HRESULT put_TeamTask(VARIANT_BOOL in) override { return put<"TeamTask">(in); }
  HRESULT put_Body(BSTR in) override { return put<"Body">(in); }
  HRESULT put_ReminderSet(VARIANT_BOOL in) override { return put<"ReminderSet">(in); }
  HRESULT put_ReminderSoundFile(BSTR in) override { return put<"ReminderSoundFile">(in); }
  HRESULT put_ReminderTime(DATE in) override { return put<"ReminderTime">(in); }
  HRESULT put_ReminderOptions(LONG in) override { return put<"ReminderOptions">(in); }
};

}  // namespace emulator
