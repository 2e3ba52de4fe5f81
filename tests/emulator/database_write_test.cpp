// Writing and deleting records.
#include <gmock/gmock.h>

#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

using testing::ElementsAre;

class Write : public DatabaseTest {
 protected:
  ~Write() override { EXPECT_TRUE(CloseHandle(handle_)); }

  std::vector<CEPROPID> idsOf(CEOID record) {
    std::vector<CEPROPID> ids;
    const auto found = device().databaseStore.records().load(record);
    if (!found) return ids;
    for (const auto& property : found->properties) ids.push_back(property.id);
    return ids;
  }

  HANDLE handle_ = openWith({10, 30});
};

TEST_F(Write, ofANewRecordGivesItAnIdentifierOfItsOwn) {
  const CEOID record = write(handle_, 0, {number(kSequence, 20), text(kName, u"Ann")});
  EXPECT_EQ(device().store.kindOf(record), ObjectKind::Record);
  EXPECT_THAT(idsOf(record), ElementsAre(kSequence, kName));
  EXPECT_EQ(sequences(handle_), (std::vector<LONG>{10, 20, 30}));
}

TEST_F(Write, leavesThePointerOnTheRecord) {
  const CEOID record = write(handle_, 0, {number(kSequence, 20)});
  EXPECT_EQ(sequenceHere(handle_), 20);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 0), record);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 1), records_[1]);
  EXPECT_EQ(write(handle_, records_[0], {number(kSequence, 40)}), records_[0]);
  EXPECT_EQ(sequenceHere(handle_), 40);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 1), 0u);
}

TEST_F(Write, ofARecordKeepsItsOtherPropertiesAndTheirOrder) {
  EXPECT_EQ(write(handle_, records_[0], {text(kName, u"Ann"), number(kSequence, 50)}), records_[0]);
  EXPECT_THAT(idsOf(records_[0]), ElementsAre(kSequence, kName));
  EXPECT_EQ(write(handle_, records_[0], {number(kItem, 1)}), records_[0]);
  EXPECT_THAT(idsOf(records_[0]), ElementsAre(kSequence, kName, kItem));
  EXPECT_EQ(sequences(handle_), (std::vector<LONG>{30, 50}));
}

TEST_F(Write, takesAPropertyAwayByItsFlag) {
  EXPECT_EQ(write(handle_, records_[0], {text(kName, u"Ann"), number(kItem, 1)}), records_[0]);
  EXPECT_EQ(write(handle_, records_[0], {deletion(kName), deletion(0x7777001F)}), records_[0]);
  EXPECT_THAT(idsOf(records_[0]), ElementsAre(kSequence, kItem));
  EXPECT_EQ(write(handle_, records_[0], {deletion(kSequence)}), records_[0]);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_END, 1), records_[0]);
}

TEST_F(Write, takesTheLastOfARepeatedProperty) {
  const CEOID record = write(handle_, 0, {number(kSequence, 1), number(kItem, 2), number(kSequence, 3)});
  EXPECT_THAT(idsOf(record), ElementsAre(kSequence, kItem));
  EXPECT_EQ(sequenceHere(handle_), 3);
}

struct WriteRefusal {
  const char* why;
  CEPROPVAL value;
};

class RefusedWrite : public Write, public testing::WithParamInterface<WriteRefusal> {};

TEST_P(RefusedWrite, changesNothing) {
  EXPECT_EQ(write(handle_, 0, {number(kSequence, 20), GetParam().value}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(write(handle_, records_[0], {number(kSequence, 20), GetParam().value}), 0u);
  EXPECT_EQ(sequences(handle_), (std::vector<LONG>{10, 30}));
}

INSTANTIATE_TEST_SUITE_P(
    Values, RefusedWrite,
    testing::Values(WriteRefusal{"TextWithoutAddress", text(kName, nullptr)},
                    WriteRefusal{
                        "BlobWithoutAddress",
                        {.propid = 0x12060041, .wLenData = 0, .wFlags = 0, .val = {.blob = {1, nullptr}}}},
                    WriteRefusal{"StreamType", number(0x001E0064, 0)}, WriteRefusal{"NoType", number(0, 0)}),
    [](const auto& fact) { return fact.param.why; });

TEST_F(Write, refusesWhatIsNoRecordOfTheDatabase) {
  const HANDLE other = open(create(u"\\Other", {}));
  const CEOID foreign = write(other, 0, {number(kSequence, 1)});
  for (const CEOID record : {foreign, database_, CEOID{12345}}) {
    EXPECT_EQ(write(handle_, record, {number(kSequence, 1)}), 0u);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_FALSE(CeDeleteRecord(handle_, record));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  }
  EXPECT_TRUE(CloseHandle(other));
}

TEST_F(Write, refusesNothingAndNowhere) {
  CEPROPVAL value = number(kSequence, 1);
  EXPECT_EQ(CeWriteRecordProps(handle_, 0, 0, &value), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(CeWriteRecordProps(handle_, 0, 1, nullptr), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(CeWriteRecordProps(nullptr, 0, 1, &value), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Write, takesPropertiesAndRecordsUpToTheirLimits) {
  std::vector<BYTE> bytes(65472, 7);
  const auto blob = [&](WORD number, DWORD size) {
    CEPROPVAL value{};
    value.propid = DWORD{number} << 16 | CEVT_BLOB;
    value.val.blob = {size, bytes.data()};
    return value;
  };
  EXPECT_EQ(write(handle_, 0, {blob(1, 65472)}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_NE(write(handle_, 0, {blob(1, 65471)}), 0u);
  EXPECT_NE(write(handle_, 0, {blob(1, 65471), blob(2, 65471)}), 0u);
  EXPECT_EQ(write(handle_, 0, {blob(1, 65471), blob(2, 65471), blob(3, 1000)}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Write, deletesARecordForGood) {
  const CEOID newest = write(handle_, 0, {number(kSequence, 99)});
  EXPECT_TRUE(CeDeleteRecord(handle_, newest));
  EXPECT_FALSE(CeDeleteRecord(handle_, newest));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(CeDeleteRecord(handle_, 0));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(CeDeleteRecord(nullptr, records_[0]));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(device().store.kindOf(newest), std::nullopt);
  EXPECT_GT(write(handle_, 0, {number(kSequence, 99)}), newest);
}

TEST_F(Write, lastsOverTheDevicesEnd) {
  const CEOID record = write(handle_, 0, {number(kSequence, 20), text(kName, u"Ann")});
  device().commit();
  Device again(path_);
  EXPECT_EQ(again.databaseStore.records().load(record)->properties.size(), 2u);
  EXPECT_EQ(again.databaseStore.catalog().find(u"\\log"), database_);
}

TEST_F(Write, isUndoneWithTheRequest) {
  device().commit();
  const CEOID record = write(handle_, 0, {number(kSequence, 20)});
  device().rollback();
  EXPECT_FALSE(device().databaseStore.records().load(record));
  EXPECT_EQ(sequences(handle_), (std::vector<LONG>{10, 30}));
}

TEST_F(Write, countsAnewWhenItIsUndone) {
  device().commit();
  EXPECT_NE(write(handle_, 0, {number(kSequence, 1)}), 0u);
  DWORD index = kPoison;
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 2, &index), 0u);
  EXPECT_EQ(sequenceHere(handle_), 30);
  device().rollback();
  EXPECT_NE(seek(handle_, CEDB_SEEK_CURRENT, 0, &index), 0u);
  EXPECT_EQ(index, 1u);
}

TEST_F(Write, goesBeyondThePlatformsNumberOfRecords) {
  constexpr LONG kRecords = 65'540;
  DatabaseStore& store = device().databaseStore;
  const auto database = store.use(database_);
  for (LONG i = 0; i < kRecords; ++i) {
    store.records().add(*database, {numberProperty(kSequence, static_cast<DWORD>(1000 + i))});
  }
  DWORD index = kPoison;
  EXPECT_NE(seek(handle_, CEDB_SEEK_END, 1, &index), 0u);
  EXPECT_EQ(index, static_cast<DWORD>(kRecords) + 1);
  EXPECT_EQ(sequenceHere(handle_), 1000 + kRecords - 1);
  CEOIDINFOEX information{};
  information.wVersion = 1;
  EXPECT_TRUE(CeOidGetInfoEx2(&volume_, database_, &information));
  EXPECT_EQ(information.infDatabase.dwNumRecords, static_cast<DWORD>(kRecords) + 2);
}

}  // namespace
}  // namespace emulator::test
