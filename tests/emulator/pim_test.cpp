#include "tests/emulator/pim_test.h"

namespace emulator::test {

PimTest::PimTest() : store_(makeStore()), model_(*store_, memory_, [this] { return now_; }) {
  void* application = nullptr;
  EXPECT_EQ(model_.createInstance(CLSID_Application, IPOutlookApp::kIid, &application), S_OK);
  *app_.out() = static_cast<IPOutlookApp*>(application);
}

PimTest::~PimTest() {
  app_ = {};
  EXPECT_EQ(model_.liveObjects().total(), 0u);
  EXPECT_EQ(memory_.liveTexts(), 0u);
  EXPECT_EQ(memory_.liveBlocks(), 0u);
}

std::unique_ptr<ObjectStore> PimTest::makeStore() {
  const std::string path = folder_.file("device");
  ObjectStore::create(path, [](ObjectStore&) {});
  return std::make_unique<ObjectStore>(path);
}

ComReference<IContact> PimTest::newContact() {
  ComReference<IDispatch> item;
  EXPECT_EQ(app_->CreateItem(olContactItem, item.out()), S_OK);
  return as<IContact>(item.get());
}

ComReference<IAppointment> PimTest::newAppointment() {
  ComReference<IDispatch> item;
  EXPECT_EQ(app_->CreateItem(olAppointmentItem, item.out()), S_OK);
  return as<IAppointment>(item.get());
}

ComReference<ITask> PimTest::newTask() {
  ComReference<IDispatch> item;
  EXPECT_EQ(app_->CreateItem(olTaskItem, item.out()), S_OK);
  return as<ITask>(item.get());
}

ComReference<IAppointment> PimTest::savedAppointment(double start, const std::u16string& subject) {
  ComReference<IAppointment> appointment = newAppointment();
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, subject), S_OK);
  EXPECT_EQ(appointment->put_Start(start), S_OK);
  EXPECT_EQ(appointment->Save(), S_OK);
  return appointment;
}

ComReference<IAppointment> PimTest::savedSeries(int occurrences) {
  ComReference<IAppointment> series = savedAppointment(date(2005, 3, 14, 9));
  auto weekly = pattern(series);
  EXPECT_EQ(weekly->put_Occurrences(occurrences), S_OK);
  EXPECT_EQ(series->Save(), S_OK);
  return series;
}

ComReference<IPOutlookItemCollection> PimTest::collection(int folder) {
  ComReference<IFolder> object;
  EXPECT_EQ(app_->GetDefaultFolder(folder, object.out()), S_OK);
  ComReference<IPOutlookItemCollection> result;
  EXPECT_EQ(object->get_Items(result.out()), S_OK);
  return result;
}

ComReference<IRecurrencePattern> PimTest::pattern(ComReference<IAppointment>& appointment) {
  ComReference<IRecurrencePattern> result;
  EXPECT_EQ(appointment->GetRecurrencePattern(result.out()), S_OK);
  return result;
}

ComReference<IAppointment> PimTest::occurrence(ComReference<IRecurrencePattern>& pattern, double day) {
  ComReference<IAppointment> result;
  if (FAILED(pattern->GetOccurrence(day, result.out()))) {
    EXPECT_FALSE(result);
  }
  return result;
}

ComReference<IExceptions> PimTest::exceptions(ComReference<IRecurrencePattern>& pattern) {
  ComReference<IExceptions> result;
  EXPECT_EQ(pattern->get_Exceptions(result.out()), S_OK);
  return result;
}

int PimTest::count(ComReference<IExceptions>& exceptions) {
  int value = -1;
  EXPECT_EQ(exceptions->get_Count(&value), S_OK);
  return value;
}

}  // namespace emulator::test
