// Tasks: defaults, independent dates, completion, and series.
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

class Task : public test::PimTest {
 protected:
  ComReference<IRecurrencePattern> taskPattern(ComReference<ITask>& task) {
    ComReference<IRecurrencePattern> result;
    EXPECT_EQ(task->GetRecurrencePattern(result.out()), S_OK);
    return result;
  }
};

TEST_F(Task, beginsOpenWithoutDates) {
  auto task = newTask();
  EXPECT_EQ(moment(task, &ITask::get_StartDate), kNoDate);
  EXPECT_EQ(moment(task, &ITask::get_DueDate), kNoDate);
  EXPECT_EQ(moment(task, &ITask::get_DateCompleted), kNoDate);
  EXPECT_EQ(moment(task, &ITask::get_ReminderTime), kNoDate);
  EXPECT_EQ(number(task, &ITask::get_Importance), 1);
  EXPECT_EQ(number(task, &ITask::get_Sensitivity), 0);
  EXPECT_EQ(flag(task, &ITask::get_Complete), VARIANT_FALSE);
  EXPECT_EQ(flag(task, &ITask::get_TeamTask), VARIANT_FALSE);
  EXPECT_EQ(flag(task, &ITask::get_ReminderSet), VARIANT_FALSE);
}

TEST_F(Task, keepsEveryPropertyThatWasPut) {
  auto task = newTask();
  EXPECT_EQ(put(task, &ITask::put_Subject, u"File"), S_OK);
  EXPECT_EQ(put(task, &ITask::put_Categories, u"Work"), S_OK);
  EXPECT_EQ(put(task, &ITask::put_Body, u"all of it"), S_OK);
  EXPECT_EQ(put(task, &ITask::put_ReminderSoundFile, u"ring.wav"), S_OK);
  EXPECT_EQ(task->put_StartDate(date(2005, 3, 14, 8)), S_OK);
  EXPECT_EQ(task->put_DueDate(date(2005, 3, 15)), S_OK);
  EXPECT_EQ(task->put_Importance(2), S_OK);
  EXPECT_EQ(task->put_Sensitivity(2), S_OK);
  EXPECT_EQ(task->put_TeamTask(VARIANT_TRUE), S_OK);
  EXPECT_EQ(task->put_ReminderSet(VARIANT_TRUE), S_OK);
  EXPECT_EQ(task->put_ReminderTime(date(2005, 3, 14, 17)), S_OK);
  EXPECT_EQ(task->put_ReminderOptions(4), S_OK);
  ASSERT_EQ(task->Save(), S_OK);

  auto again = find<ITask>(number(task, &ITask::get_Oid));
  EXPECT_EQ(text(again, &ITask::get_Subject), u"File");
  EXPECT_EQ(text(again, &ITask::get_Categories), u"Work");
  EXPECT_EQ(text(again, &ITask::get_Body), u"all of it");
  EXPECT_EQ(text(again, &ITask::get_ReminderSoundFile), u"ring.wav");
  EXPECT_EQ(moment(again, &ITask::get_StartDate), date(2005, 3, 14, 8));
  EXPECT_EQ(moment(again, &ITask::get_DueDate), date(2005, 3, 15));
  EXPECT_EQ(number(again, &ITask::get_Importance), 2);
  EXPECT_EQ(number(again, &ITask::get_Sensitivity), 2);
  EXPECT_EQ(flag(again, &ITask::get_TeamTask), VARIANT_TRUE);
  EXPECT_EQ(flag(again, &ITask::get_ReminderSet), VARIANT_TRUE);
  EXPECT_EQ(moment(again, &ITask::get_ReminderTime), date(2005, 3, 14, 17));
  EXPECT_EQ(number(again, &ITask::get_ReminderOptions), 4);
}

TEST_F(Task, leavesItsTwoDatesToThemselves) {
  auto task = newTask();
  EXPECT_EQ(task->put_StartDate(date(2005, 3, 20)), S_OK);
  EXPECT_EQ(moment(task, &ITask::get_DueDate), kNoDate);
  EXPECT_EQ(task->put_DueDate(date(2005, 3, 10)), S_OK);
  ASSERT_EQ(task->Save(), S_OK);
  EXPECT_EQ(moment(task, &ITask::get_StartDate), date(2005, 3, 20));
  EXPECT_EQ(moment(task, &ITask::get_DueDate), date(2005, 3, 10));
  EXPECT_EQ(task->put_DueDate(kNoDate), S_OK);
  EXPECT_EQ(moment(task, &ITask::get_DueDate), kNoDate);
}

TEST_F(Task, datesItsCompletion) {
  auto task = newTask();
  EXPECT_EQ(task->put_Complete(VARIANT_TRUE), S_OK);
  EXPECT_EQ(moment(task, &ITask::get_DateCompleted), date(2005, 3, 14));
  now_ = date(2005, 3, 15, 9);
  EXPECT_EQ(task->put_Complete(VARIANT_TRUE), S_OK);  // it was complete before
  EXPECT_EQ(moment(task, &ITask::get_DateCompleted), date(2005, 3, 14));
  EXPECT_EQ(task->put_Complete(VARIANT_FALSE), S_OK);
  EXPECT_EQ(moment(task, &ITask::get_DateCompleted), kNoDate);
}

TEST_F(Task, refusesASubjectThatIsTooLong) {
  auto task = newTask();
  EXPECT_EQ(put(task, &ITask::put_Subject, std::u16string(4095, u'a')), S_OK);
  EXPECT_EQ(put(task, &ITask::put_Subject, std::u16string(4096, u'a')), E_FIELDTOOLARGE);
}

TEST_F(Task, recursFromItsStartItsDueDateOrToday) {
  auto task = newTask();
  EXPECT_EQ(task->put_DueDate(date(2005, 3, 16)), S_OK);
  auto byDueDate = taskPattern(task);
  EXPECT_EQ(moment(byDueDate, &IRecurrencePattern::get_PatternStartDate), date(2005, 3, 16));
  EXPECT_EQ(number(byDueDate, &IRecurrencePattern::get_DayOfWeekMask), 8);
  EXPECT_EQ(task->ClearRecurrencePattern(), S_OK);
  EXPECT_EQ(task->put_StartDate(date(2005, 3, 15)), S_OK);
  auto byStart = taskPattern(task);
  EXPECT_EQ(moment(byStart, &IRecurrencePattern::get_PatternStartDate), date(2005, 3, 15));
  auto bare = newTask();
  auto today = taskPattern(bare);
  EXPECT_EQ(moment(today, &IRecurrencePattern::get_PatternStartDate), date(2005, 3, 14));
}

TEST_F(Task, ofASeriesIsOnlyCompletedByItsCompletion) {
  auto task = newTask();
  EXPECT_EQ(task->put_StartDate(date(2005, 3, 14)), S_OK);
  auto weekly = taskPattern(task);
  EXPECT_EQ(weekly->put_Occurrences(5), S_OK);
  ASSERT_EQ(task->Save(), S_OK);
  EXPECT_EQ(task->put_Complete(VARIANT_TRUE), S_OK);
  ASSERT_EQ(task->Save(), S_OK);
  auto again = find<ITask>(number(task, &ITask::get_Oid));
  EXPECT_EQ(flag(again, &ITask::get_IsRecurring), VARIANT_TRUE);
  EXPECT_EQ(flag(again, &ITask::get_Complete), VARIANT_TRUE);
  EXPECT_EQ(moment(again, &ITask::get_StartDate), date(2005, 3, 14));
  EXPECT_EQ(items().count(ObjectKind::Task), 1);
}

TEST_F(Task, hasNoOccurrencesExceptionsOrTimesOfDay) {
  auto task = newTask();
  auto weekly = taskPattern(task);
  ASSERT_EQ(task->Save(), S_OK);
  EXPECT_FALSE(occurrence(weekly, date(2005, 3, 14)));
  auto none = exceptions(weekly);
  EXPECT_EQ(count(none), 0);
  DATE time = test::kPoisonDate;
  LONG minutes = test::kPoisonNumber;
  EXPECT_EQ(weekly->get_StartTime(&time), E_NOTIMPL);
  EXPECT_EQ(weekly->get_EndTime(&time), E_NOTIMPL);
  EXPECT_EQ(weekly->get_Duration(&minutes), E_NOTIMPL);
  EXPECT_EQ(weekly->put_StartTime(0.5), E_NOTIMPL);
}

}  // namespace
}  // namespace emulator
