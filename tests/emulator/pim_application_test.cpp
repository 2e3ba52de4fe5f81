// The application object, folders and collections.
#include "emulator/pim/local_clock.h"
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

class Application : public test::PimTest {
 protected:
  HRESULT create(const CLSID& classId, const IID& iid) {
    void* object = &object;
    const HRESULT result = model_.createInstance(classId, iid, &object);
    EXPECT_EQ(object == nullptr, FAILED(result));
    if (object != nullptr) static_cast<IUnknown*>(object)->Release();
    return result;
  }

  SYSTEMTIME toSystemTime(double value) {
    SYSTEMTIME time{9, 9, 9, 9, 9, 9, 9, 9};
    EXPECT_EQ(app_->VariantTimeToSystemTime(value, &time), S_OK);
    return time;
  }

  HRESULT toVariant(SYSTEMTIME time) {
    DATE value = test::kPoisonDate;
    const HRESULT result = app_->SystemTimeToVariantTime(&time, &value);
    converted_ = value;
    return result;
  }

  double converted_ = 0;
};

void expectTime(const SYSTEMTIME& time, std::vector<int> fields) {
  EXPECT_EQ((std::vector<int>{time.wYear, time.wMonth, time.wDayOfWeek, time.wDay, time.wHour, time.wMinute,
                              time.wSecond, time.wMilliseconds}),
            fields);
}

TEST_F(Application, isTheOnlyClassThatCanBeMade) {
  EXPECT_EQ(create(CLSID_Application, IPOutlookApp::kIid), S_OK);
  EXPECT_EQ(create(CLSID_Application, IUnknown::kIid), S_OK);
  EXPECT_EQ(create(CLSID_Application, IDispatch::kIid), S_OK);
  EXPECT_EQ(create(CLSID_Application, IContact::kIid), E_NOINTERFACE);
  EXPECT_EQ(create(IContact::kIid, IContact::kIid), REGDB_E_CLASSNOTREG);
}

TEST_F(Application, cannotBeMadeUntilItsLibraryIsRegisteredAgain) {
  model_.unregisterServer();
  EXPECT_EQ(create(CLSID_Application, IPOutlookApp::kIid), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(model_.registerServer(), S_OK);
  EXPECT_EQ(create(CLSID_Application, IPOutlookApp::kIid), S_OK);
}

TEST_F(Application, hasThreeFoldersAndThreeItemTypes) {
  for (const int number : {olFolderCalendar, olFolderContacts, olFolderTasks}) {
    ComReference<IFolder> folder;
    EXPECT_EQ(app_->GetDefaultFolder(number, folder.out()), S_OK);
  }
  for (const int number : {0, olFolderCities, olFolderInfrared}) {
    auto* folder = reinterpret_cast<IFolder*>(1);
    EXPECT_EQ(app_->GetDefaultFolder(number, &folder), E_INVALIDARG);
    EXPECT_EQ(folder, nullptr);
  }
  for (const int type : {0, 4, olCityItem}) {
    auto* item = reinterpret_cast<IDispatch*>(1);
    EXPECT_EQ(app_->CreateItem(type, &item), E_INVALIDARG);
    EXPECT_EQ(item, nullptr);
  }
}

TEST_F(Application, findsItemsOfAnyTypeByTheirIdentifierAndNothingElse) {
  auto appointment = savedAppointment(date(2005, 3, 14, 9));
  auto contact = newContact();
  ASSERT_EQ(contact->Save(), S_OK);
  auto task = newTask();
  ASSERT_EQ(task->Save(), S_OK);
  EXPECT_TRUE(find<IAppointment>(number(appointment, &IAppointment::get_Oid)));
  EXPECT_TRUE(find<IContact>(number(contact, &IContact::get_Oid)));
  EXPECT_TRUE(find<ITask>(number(task, &ITask::get_Oid)));
  EXPECT_FALSE(find<IContact>(number(task, &ITask::get_Oid)));

  const Oid file = store_->allocate(ObjectKind::File);
  for (const LONG oid : {0, -1, 12345, static_cast<LONG>(file)}) {
    auto* item = reinterpret_cast<IDispatch*>(1);
    EXPECT_EQ(app_->GetItemFromOid(oid, &item), E_INVALIDARG);
    EXPECT_EQ(item, nullptr);
  }
}

TEST_F(Application, convertsDatesToWholeSecondsWithTheDayOfWeek) {
  expectTime(toSystemTime(date(2005, 3, 14, 14, 35)), {2005, 3, 1, 14, 14, 35, 0, 0});
  expectTime(toSystemTime(date(2005, 3, 14) + 10.4 / 86400), {2005, 3, 1, 14, 0, 0, 10, 0});
  expectTime(toSystemTime(date(2005, 3, 14) + 10.6 / 86400), {2005, 3, 1, 14, 0, 0, 11, 0});
  // Half a second before midnight is midnight, also at the end of a year.
  expectTime(toSystemTime(date(2005, 1, 1) - 0.4 / 86400), {2005, 1, 6, 1, 0, 0, 0, 0});
  // The first day of the count is a Saturday, and 949998 is a multiple of 7.
  expectTime(toSystemTime(kNoDate), {4501, 1, 6, 1, 0, 0, 0, 0});
  expectTime(toSystemTime(0.25), {1899, 12, 6, 30, 6, 0, 0, 0});
  // 1899-12-29, 18:00: the time of day runs forwards before the first day too.
  expectTime(toSystemTime(-1.75), {1899, 12, 5, 29, 18, 0, 0, 0});
}

TEST_F(Application, convertsNoDateOutsideTheCalendar) {
  SYSTEMTIME time{};
  for (const double value : {-200000.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(app_->VariantTimeToSystemTime(value, &time), E_INVALIDARG) << value;
  }
}

TEST_F(Application, convertsSystemTimesWithoutTheirMilliseconds) {
  EXPECT_EQ(toVariant({2005, 3, 0, 14, 14, 35, 10, 900}), S_OK);
  EXPECT_DOUBLE_EQ(converted_, date(2005, 3, 14, 14, 35) + 10.0 / 86400);
  EXPECT_EQ(toVariant({1899, 12, 0, 29, 18, 0, 0, 0}), S_OK);
  EXPECT_DOUBLE_EQ(converted_, -1.75);
  EXPECT_EQ(toVariant({4501, 1, 0, 1, 0, 0, 0, 0}), S_OK);
  EXPECT_DOUBLE_EQ(converted_, kNoDate);
}

TEST_F(Application, refusesSystemTimesThatDoNotExist) {
  const std::vector<SYSTEMTIME> wrong{{2005, 2, 0, 30, 0, 0, 0, 0}, {2005, 13, 0, 1, 0, 0, 0, 0},
                                      {2005, 0, 0, 1, 0, 0, 0, 0},  {2005, 1, 0, 0, 0, 0, 0, 0},
                                      {2005, 1, 0, 1, 24, 0, 0, 0}, {2005, 1, 0, 1, 0, 60, 0, 0},
                                      {2005, 1, 0, 1, 0, 0, 60, 0}, {2005, 1, 0, 1, 0, 0, 0, 1000},
                                      {1600, 1, 0, 1, 0, 0, 0, 0},  {10000, 1, 0, 1, 0, 0, 0, 0}};
  for (const SYSTEMTIME& time : wrong) {
    EXPECT_EQ(toVariant(time), E_INVALIDARG);
    EXPECT_EQ(converted_, test::kPoisonDate);
  }
}

TEST_F(Application, countsAFolderAndGivesItsItemsFromOne) {
  savedAppointment(date(2005, 3, 16, 9), u"third");
  savedAppointment(date(2005, 3, 14, 9), u"first");
  savedAppointment(date(2005, 3, 15, 9), u"second");
  auto calendar = collection(olFolderCalendar);
  int number = -1;
  EXPECT_EQ(calendar->get_Count(&number), S_OK);
  EXPECT_EQ(number, 3);
  std::vector<std::u16string> subjects;
  for (int i = 1; i <= 3; ++i) {
    ComReference<IDispatch> item;
    ASSERT_EQ(calendar->Item(i, item.out()), S_OK);
    auto appointment = as<IAppointment>(item.get());
    subjects.push_back(text(appointment, &IAppointment::get_Subject));
  }
  EXPECT_EQ(subjects, (std::vector<std::u16string>{u"first", u"second", u"third"}));
  for (const int index : {0, 4, -1}) {
    auto* item = reinterpret_cast<IDispatch*>(1);
    EXPECT_EQ(calendar->Item(index, &item), E_INVALIDARG);
    EXPECT_EQ(item, nullptr);
    EXPECT_EQ(calendar->Remove(index), E_INVALIDARG);
  }
}

TEST_F(Application, removesItemsThroughTheirFolder) {
  for (int day = 14; day < 18; ++day) savedAppointment(date(2005, 3, day));
  auto calendar = collection(olFolderCalendar);
  EXPECT_EQ(calendar->Remove(2), S_OK);
  int number = -1;
  EXPECT_EQ(calendar->get_Count(&number), S_OK);
  EXPECT_EQ(number, 3);
  for (int index = 3; index >= 1; --index) EXPECT_EQ(calendar->Remove(index), S_OK);
  EXPECT_EQ(calendar->get_Count(&number), S_OK);
  EXPECT_EQ(number, 0);
  EXPECT_EQ(items().count(ObjectKind::Appointment), 0);
}

TEST_F(Application, listsASeriesAsOneEntry) {
  savedSeries(10);
  int number = -1;
  EXPECT_EQ(collection(olFolderCalendar)->get_Count(&number), S_OK);
  EXPECT_EQ(number, 1);
}

TEST_F(Application, keepsACollectionAsItWasWhenItWasFirstRead) {
  savedAppointment(date(2005, 3, 14));
  auto calendar = collection(olFolderCalendar);
  ComReference<IDispatch> item;
  ASSERT_EQ(calendar->Item(1, item.out()), S_OK);
  savedAppointment(date(2005, 3, 13));
  int number = -1;
  EXPECT_EQ(calendar->get_Count(&number), S_OK);
  EXPECT_EQ(number, 1);
}

TEST_F(Application, ordersContactsByNameAndTasksByIdentifier) {
  for (const char16_t* name : {u"lee", u"Abel", u"Zorn", u"\u0100rne"}) {
    auto contact = newContact();
    ASSERT_EQ(put(contact, &IContact::put_FileAs, name), S_OK);
    ASSERT_EQ(contact->Save(), S_OK);
  }
  std::vector<std::u16string> names;
  for (const Oid oid : items().list(ObjectKind::Contact)) {
    auto contact = find<IContact>(static_cast<LONG>(oid));
    names.push_back(text(contact, &IContact::get_FileAs));
  }
  EXPECT_EQ(names, (std::vector<std::u16string>{u"Abel", u"lee", u"Zorn", u"\u0100rne"}));

  PimItem high(ObjectKind::Task);
  high.oid = 900;
  ASSERT_EQ(items().add(high), S_OK);
  PimItem low(ObjectKind::Task);
  low.oid = 20;
  ASSERT_EQ(items().add(low), S_OK);
  EXPECT_EQ(items().list(ObjectKind::Task), (std::vector<Oid>{20, 900}));
}

TEST_F(Application, givesAFolderThePropertyInterface) {
  ComReference<IFolder> folder;
  ASSERT_EQ(app_->GetDefaultFolder(olFolderTasks, folder.out()), S_OK);
  int type = -1;
  EXPECT_EQ(folder->get_DefaultItemType(&type), S_OK);
  EXPECT_EQ(type, olTaskItem);
  auto properties = as<IItem>(folder.get());
  ASSERT_TRUE(properties);
  CEPROPVAL wish{};
  wish.propid = PIMPR_FOLDERNOTIFICATIONS;
  wish.val.ulVal = 3;
  EXPECT_EQ(properties->SetProps(0, 1, &wish), S_OK);
  wish.propid = PIMPR_BODY_BINARY;
  EXPECT_EQ(properties->SetProps(0, 1, &wish), E_INVALIDARG);
  EXPECT_EQ(properties->SetProps(0, 0, &wish), E_INVALIDARG);
  EXPECT_EQ(properties->SetProps(0, 1, nullptr), E_INVALIDARG);
}

TEST_F(Application, readsAFoldersWishForNotificationsFromEveryObjectOfTheFolder) {
  const auto folderProperties = [this](int number) {
    ComReference<IFolder> folder;
    EXPECT_EQ(app_->GetDefaultFolder(number, folder.out()), S_OK);
    return as<IItem>(folder.get());
  };
  const CEPROPID ids[] = {PIMPR_FOLDERNOTIFICATIONS, PIMPR_BODY_BINARY};
  CEPROPVAL wish{};
  wish.propid = PIMPR_FOLDERNOTIFICATIONS;
  wish.val.ulVal = 3;
  EXPECT_EQ(folderProperties(olFolderContacts)->SetProps(0, 1, &wish), S_OK);
  for (const int number : {olFolderContacts, olFolderTasks}) {
    CEPROPVAL* values = nullptr;
    ULONG size = 77;
    ASSERT_EQ(folderProperties(number)->GetProps(ids, CEDB_ALLOWREALLOC, 2, &values, &size, heap_), S_OK);
    EXPECT_EQ(size, 2 * sizeof(CEPROPVAL));
    EXPECT_EQ(values[0].propid, PIMPR_FOLDERNOTIFICATIONS);
    EXPECT_EQ(values[0].wFlags, number == olFolderContacts ? 0 : CEDB_PROPNOTFOUND);
    EXPECT_EQ(values[0].val.ulVal, number == olFolderContacts ? 3u : 0u);
    EXPECT_EQ(values[1].wFlags, CEDB_PROPNOTFOUND);
    EXPECT_TRUE(memory_.freeBlock(heap_, values));
  }
  CEPROPVAL* values = &wish;
  ULONG size = 77;
  EXPECT_EQ(folderProperties(olFolderTasks)->GetProps(ids, 0, 2, &values, &size, heap_), E_INVALIDARG);
  EXPECT_EQ(values, nullptr);
  EXPECT_EQ(folderProperties(olFolderTasks)->GetProps(nullptr, CEDB_ALLOWREALLOC, 2, &values, &size, heap_),
            E_INVALIDARG);
  EXPECT_EQ(folderProperties(olFolderTasks)->GetProps(ids, CEDB_ALLOWREALLOC, 2, nullptr, &size, heap_),
            E_POINTER);
}

TEST_F(Application, answersOnlyForTheInterfacesThatAnObjectHas) {
  auto contact = newContact();
  auto item = as<IItem>(contact.get());
  ASSERT_TRUE(item);
  EXPECT_TRUE(as<IDispatch>(contact.get()));
  EXPECT_FALSE(as<IAppointment>(contact.get()));
  EXPECT_FALSE(as<IStream>(contact.get()));
  // One object has one identity, whichever interface is asked.
  EXPECT_EQ(as<IUnknown>(contact.get()).get(), as<IUnknown>(item.get()).get());
  EXPECT_EQ(as<IContact>(item.get()).get(), contact.get());
}

TEST_F(Application, countsItsLiveObjects) {
  const LiveObjects& live = model_.liveObjects();
  EXPECT_EQ(live.count(ModelClass::Application), 1u);
  {
    auto series = savedSeries(3);
    auto weekly = pattern(series);
    EXPECT_EQ(live.count(ModelClass::Appointment), 1u);
    EXPECT_EQ(live.count(ModelClass::RecurrencePattern), 1u);
    // A pattern keeps its item alive.
    series = {};
    EXPECT_EQ(live.count(ModelClass::Appointment), 1u);
  }
  EXPECT_EQ(live.total(), 1u);
}

TEST(LocalClock, givesTheDevicesTimeInItsZone) {
  test::TemporaryFolder folder;
  ObjectStore::create(folder.file("device"), [](ObjectStore&) {});
  ObjectStore store(folder.file("device"));
  Configuration configuration(store.settings());
  TIME_ZONE_INFORMATION zone = utcZone();
  zone.Bias = 480;
  configuration.setTimeZone(zone);
  const SYSTEMTIME utc{2005, 3, 0, 14, 14, 30, 0, 0};
  const Clock clock(
      store.settings(), [&] { return *ticksOf(utc); }, Clock::Pace::Skipping);
  EXPECT_DOUBLE_EQ(localClock(clock, configuration)(), date(2005, 3, 14, 6, 30));
}

}  // namespace
}  // namespace emulator
