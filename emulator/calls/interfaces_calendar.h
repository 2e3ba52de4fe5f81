// The object model's appointment and task, with their recurrence.
#pragma once

#include "emulator/calls/interface.h"

namespace emulator {

template <>
struct Interface<IAppointment> {
  using Base = IDispatch;
  using Members = CallList<
      Call<&IAppointment::ClearRecurrencePattern>, Call<&IAppointment::GetRecurrencePattern>,
      Call<&IAppointment::get_IsRecurring>, Call<&IAppointment::get_Subject>,
      Call<&IAppointment::get_Location>, Call<&IAppointment::get_Categories>, Call<&IAppointment::get_Start>,
      Call<&IAppointment::get_Duration>, Call<&IAppointment::get_End>, Call<&IAppointment::get_AllDayEvent>,
      Call<&IAppointment::get_BusyStatus>, Call<&IAppointment::get_Sensitivity>,
      Call<&IAppointment::get_Body>, Call<&IAppointment::get_Recipients>,
      Call<&IAppointment::get_MeetingStatus>, Call<&IAppointment::get_ReminderSet>,
      Call<&IAppointment::get_ReminderSoundFile>, Call<&IAppointment::get_ReminderMinutesBeforeStart>,
      Call<&IAppointment::get_ReminderOptions>, Call<&IAppointment::put_Subject>,
      Call<&IAppointment::put_Location>, Call<&IAppointment::put_Categories>, Call<&IAppointment::put_Start>,
      Call<&IAppointment::put_Duration>, Call<&IAppointment::put_End>, Call<&IAppointment::put_AllDayEvent>,
      Call<&IAppointment::put_BusyStatus>, Call<&IAppointment::put_Sensitivity>,
      Call<&IAppointment::put_Body>, Call<&IAppointment::put_ReminderSet>,
      Call<&IAppointment::put_ReminderSoundFile>, Call<&IAppointment::put_ReminderMinutesBeforeStart>,
      Call<&IAppointment::put_ReminderOptions>, Call<&IAppointment::Save>, Call<&IAppointment::Send>,
      Call<&IAppointment::Delete>, Call<&IAppointment::Cancel>, Call<&IAppointment::Copy>,
      Call<&IAppointment::Display>, Call<&IAppointment::get_Oid>, Call<&IAppointment::put_BodyInk, in(0)>,
      Call<&IAppointment::get_BodyInk>, Call<&IAppointment::get_Application>>;
};

template <>
struct Interface<ITask> {
  using Base = IDispatch;
  using Members =
      CallList<Call<&ITask::ClearRecurrencePattern>, Call<&ITask::GetRecurrencePattern>,
               Call<&ITask::get_IsRecurring>, Call<&ITask::get_Subject>, Call<&ITask::get_Categories>,
               Call<&ITask::get_StartDate>, Call<&ITask::get_DueDate>, Call<&ITask::get_DateCompleted>,
               Call<&ITask::get_Importance>, Call<&ITask::get_Complete>, Call<&ITask::get_Sensitivity>,
               Call<&ITask::get_TeamTask>, Call<&ITask::get_Body>, Call<&ITask::get_ReminderSet>,
               Call<&ITask::get_ReminderSoundFile>, Call<&ITask::get_ReminderTime>,
               Call<&ITask::get_ReminderOptions>, Call<&ITask::put_Subject>, Call<&ITask::put_Categories>,
               Call<&ITask::put_StartDate>, Call<&ITask::put_DueDate>, Call<&ITask::put_Importance>,
               Call<&ITask::put_Complete>, Call<&ITask::put_Sensitivity>, Call<&ITask::put_TeamTask>,
               Call<&ITask::put_Body>, Call<&ITask::put_ReminderSet>, Call<&ITask::put_ReminderSoundFile>,
               Call<&ITask::put_ReminderTime>, Call<&ITask::put_ReminderOptions>, Call<&ITask::Save>,
               Call<&ITask::Delete>, Call<&ITask::SkipRecurrence>, Call<&ITask::Copy>, Call<&ITask::Display>,
               Call<&ITask::get_Oid>, Call<&ITask::put_BodyInk, in(0)>, Call<&ITask::get_BodyInk>,
               Call<&ITask::get_Application>>;
};

template <>
struct Interface<IRecurrencePattern> {
  using Base = IDispatch;
  using Members =
      CallList<Call<&IRecurrencePattern::get_RecurrenceType>, Call<&IRecurrencePattern::get_PatternStartDate>,
               Call<&IRecurrencePattern::get_StartTime>, Call<&IRecurrencePattern::get_EndTime>,
               Call<&IRecurrencePattern::get_PatternEndDate>, Call<&IRecurrencePattern::get_NoEndDate>,
               Call<&IRecurrencePattern::get_Occurrences>, Call<&IRecurrencePattern::get_Interval>,
               Call<&IRecurrencePattern::get_DayOfWeekMask>, Call<&IRecurrencePattern::get_DayOfMonth>,
               Call<&IRecurrencePattern::get_Instance>, Call<&IRecurrencePattern::get_Duration>,
               Call<&IRecurrencePattern::get_MonthOfYear>, Call<&IRecurrencePattern::put_RecurrenceType>,
               Call<&IRecurrencePattern::put_PatternStartDate>, Call<&IRecurrencePattern::put_StartTime>,
               Call<&IRecurrencePattern::put_EndTime>, Call<&IRecurrencePattern::put_PatternEndDate>,
               Call<&IRecurrencePattern::put_NoEndDate>, Call<&IRecurrencePattern::put_Occurrences>,
               Call<&IRecurrencePattern::put_Interval>, Call<&IRecurrencePattern::put_DayOfWeekMask>,
               Call<&IRecurrencePattern::put_DayOfMonth>, Call<&IRecurrencePattern::put_Instance>,
               Call<&IRecurrencePattern::put_Duration>, Call<&IRecurrencePattern::put_MonthOfYear>,
               Call<&IRecurrencePattern::get_Exceptions>, Call<&IRecurrencePattern::get_Application>,
               Call<&IRecurrencePattern::GetOccurrence>>;
};

template <>
struct Interface<IException> {
  using Base = IDispatch;
  using Members = CallList<Call<&IException::get_AppointmentItem>, Call<&IException::get_OriginalDate>,
                           Call<&IException::get_Deleted>, Call<&IException::get_Application>>;
};

template <>
struct Interface<IExceptions> {
  using Base = IDispatch;
  using Members = CallList<Call<&IExceptions::Item>, Call<&IExceptions::get_Count>,
                           Call<&IExceptions::get__NewEnum>, Call<&IExceptions::get_Application>>;
};

}  // namespace emulator
