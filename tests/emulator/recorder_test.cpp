// What is recorded of items that change.
#include "tests/emulator/recorder_test.h"

namespace emulator::test {
namespace {

using Recorder = RecorderTest;

struct KindFact {
  ObjectKind kind;
  std::u16string log;
};

class RecordedKind : public RecorderTest, public testing::WithParamInterface<KindFact> {};

TEST_P(RecordedKind, hasALogOfItsOwn) {
  const Oid oid = add(GetParam().kind);
  EXPECT_EQ(log(GetParam().log), (std::vector<Logged>{{oid, 1, 1}}));
  EXPECT_EQ(counter(GetParam().log), 1u);
  EXPECT_EQ(device().databaseStore.catalog().list().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Kinds, RecordedKind,
                         testing::Values(KindFact{ObjectKind::Contact, u"\\QorvContactLog"},
                                         KindFact{ObjectKind::Appointment, u"\\QorvAppointmentLog"},
                                         KindFact{ObjectKind::Task, u"\\QorvTaskLog"}));

TEST_F(Recorder, makesTheLogWithTheNewestFirst) {
  add(kContact);
  const auto database = device().databaseStore.use(device().databaseStore.catalog().find(kContactLog));
  ASSERT_TRUE(database);
  EXPECT_EQ(database->type, 0u);
  ASSERT_EQ(database->orders.size(), 1u);
  ASSERT_EQ(database->orders[0].properties.size(), 1u);
  EXPECT_EQ(database->orders[0].properties[0].id, 0x12020003u);
  EXPECT_EQ(database->orders[0].properties[0].flags, CEDB_SORT_DESCENDING);
}

TEST_F(Recorder, keepsOneRecordOfAnItemWithItsLatestChange) {
  const Oid first = add(kContact);
  const Oid second = add(kContact);
  device().commit();
  EXPECT_EQ(log(), (std::vector<Logged>{{second, 2, 1}, {first, 1, 1}}));
  change(kContact, first);
  device().commit();
  EXPECT_EQ(log(), (std::vector<Logged>{{first, 3, 2}, {second, 2, 1}}));
  EXPECT_TRUE(items().remove(second));
  device().commit();
  EXPECT_EQ(log(), (std::vector<Logged>{{second, 4, 3}, {first, 3, 2}}));
  EXPECT_EQ(counter(), 4u);
}

TEST_F(Recorder, takesSeveralSavesInOneRequestForOneChange) {
  const Oid oid = add(kContact);
  change(kContact, oid);
  change(kContact, oid);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 1, 1}}));
  device().commit();
  change(kContact, oid);
  change(kContact, oid);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 2, 2}}));
  EXPECT_EQ(counter(), 2u);
}

TEST_F(Recorder, callsWhatWasAddedAndDeletedInOneRequestDeleted) {
  const Oid gone = add(kContact);
  const Oid stays = add(kContact);
  EXPECT_TRUE(items().remove(gone));
  EXPECT_EQ(log(), (std::vector<Logged>{{stays, 2, 1}, {gone, 1, 3}}));
  EXPECT_EQ(counter(), 2u);
}

TEST_F(Recorder, callsWhatWasChangedAndDeletedInOneRequestDeleted) {
  const Oid oid = add(kContact);
  device().commit();
  change(kContact, oid);
  EXPECT_TRUE(items().remove(oid));
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 2, 3}}));
}

TEST_F(Recorder, countsAChangeOfAnOccurrenceForItsSeries) {
  PimItem series(ObjectKind::Appointment);
  series.properties.set(kStart, 38425.375);  // 2005-03-14 9:00
  series.properties.set(kEnd, 38425.5);
  series.rule = items().freshPattern(series.properties);
  series.ruleChanged = true;
  ASSERT_EQ(items().add(series), S_OK);
  device().commit();
  ASSERT_EQ(items().putException(series.oid, SeriesException{38425, std::nullopt}), S_OK);
  EXPECT_EQ(log(u"\\QorvAppointmentLog"), (std::vector<Logged>{{series.oid, 2, 2}}));
}

TEST_F(Recorder, beginsAgainWithOneWhenTheLogWasEmptiedAndTheCounterReset) {
  const Oid oid = add(kContact);
  device().commit();
  DatabaseStore& databases = device().databaseStore;
  databases.records().removeAll(*databases.use(databases.catalog().find(kContactLog)));
  device().registry.put(kRoot, numberValue(kContactLog, 0));
  device().commit();
  change(kContact, oid);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 1, 2}}));
  EXPECT_EQ(counter(), 1u);
}

TEST_F(Recorder, recordsAnewWhatWasTakenOutOfTheLogInTheSameRequest) {
  const Oid oid = add(kContact);
  DatabaseStore& databases = device().databaseStore;
  databases.records().removeAll(*databases.use(databases.catalog().find(kContactLog)));
  change(kContact, oid);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 2, 1}}));
}

TEST_F(Recorder, goesOnFromTheCounter) {
  device().registry.put(kRoot, numberValue(kContactLog, 41));
  const Oid oid = add(kContact);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 42, 1}}));
  EXPECT_EQ(counter(), 42u);
}

TEST_F(Recorder, takesACounterThatIsNoNumberForNone) {
  device().registry.put(kRoot, textValue(kContactLog, u"7"));
  add(kContact);
  EXPECT_EQ(counter(), 1u);
}

TEST_F(Recorder, usesTheNamesOfTheInstallation) {
  device().configuration.setModulePath(u"\\Program Files\\042\\QORVAPIMGR.dll");
  const Oid oid = add(kContact);
  EXPECT_EQ(log(u"\\QorvContactLog_042"), (std::vector<Logged>{{oid, 1, 1}}));
  EXPECT_EQ(counter(u"\\QorvContactLog_042", std::u16string(kRoot) + u"\\042"), 1u);
  EXPECT_TRUE(log().empty());
}

TEST_F(Recorder, findsTheItemsRecordInALogThatOthersMade) {
  DatabaseStore& databases = device().databaseStore;
  PropertyDatabase made{.name = std::u16string(kContactLog),
                        .orders = {{.properties = {{0x12020003, CEDB_SORT_DESCENDING}}}}};
  databases.catalog().create(made);
  const Oid oid = add(ObjectKind::Task);
  for (const DWORD item : {5u, oid, 6u}) {
    databases.records().add(made, {numberProperty(0x12010003, item),
                                   numberProperty(0x12020003, item == oid ? 7 : 3),
                                   numberProperty(0x12030003, 2),
                                   {0x12060041, Bytes(8, 1)}});
  }
  device().registry.put(kRoot, numberValue(kContactLog, 7));
  ChangeRecorder(databases, device().registry, device().configuration)
      .record({ItemChangeKind::Deleted, kContact, oid});
  const std::vector<Logged> expected{{oid, 8, 3}, {5, 3, 2}, {6, 3, 2}};
  EXPECT_EQ(log(), expected);
  // The record's other properties are gone: they would be taken for the new change's.
  const auto records = databases.records().list(made.oid);
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(databases.records().load(records[1])->properties.size(), 3u);
}

TEST_F(Recorder, forgetsWhatIsUndone) {
  const Oid kept = add(kContact);
  device().commit();
  change(kContact, kept);
  device().rollback();
  EXPECT_EQ(log(), (std::vector<Logged>{{kept, 1, 1}}));
  change(kContact, kept);
  EXPECT_EQ(log(), (std::vector<Logged>{{kept, 2, 2}}));
  EXPECT_EQ(counter(), 2u);
}

TEST_F(Recorder, findsItsRecordsAfterTheOrderOnItemsWasUndone) {
  DatabaseStore& databases = device().databaseStore;
  PropertyDatabase made{.name = std::u16string(kContactLog),
                        .orders = {{.properties = {{0x12020003, CEDB_SORT_DESCENDING}}}}};
  databases.catalog().create(made);
  items().setListener({});
  const Oid oid = add(kContact);
  device().commit();
  items().setListener([this](const ItemChange& change) { device().recorder.record(change); });
  const auto kept = databases.use(made.oid);  // as by a program that has the log open
  change(kContact, oid);
  device().rollback();
  change(kContact, oid);
  device().commit();
  change(kContact, oid);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 2, 2}}));
}

TEST_F(Recorder, goesOnWhenTheDeviceIsOpenedAgain) {
  const Oid oid = add(kContact);
  reopen();
  change(kContact, oid);
  EXPECT_EQ(log(), (std::vector<Logged>{{oid, 2, 2}}));
}

TEST_F(Recorder, isKeptOutByTakingItsEarsAway) {
  items().setListener({});
  add(kContact);
  EXPECT_TRUE(device().databaseStore.catalog().list().empty());
  EXPECT_FALSE(device().registry.get(kRoot, kContactLog));
}

}  // namespace
}  // namespace emulator::test
