// Making, opening and deleting databases.
#include <algorithm>

#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

class Databases : public DatabaseTest {
 protected:
  CEDBASEINFOEX description(std::u16string_view name) {
    CEDBASEINFOEX result{};
    result.wVersion = 1;
    result.dwFlags = CEDB_VALIDNAME;
    std::ranges::copy(name, result.szDbaseName);
    return result;
  }
  /// By name, without an order; the last error when it fails.
  DWORD errorOfOpening(std::u16string name) {
    CEOID oid = 0;
    const HANDLE handle = CeOpenDatabaseEx2(&volume_, &oid, name.data(), nullptr, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return GetLastError();
    EXPECT_TRUE(CloseHandle(handle));
    return ERROR_SUCCESS;
  }
};

TEST_F(Databases, areMadeWithTypeAndOrders) {
  const CEOID oid = create(u"\\QorvContracts", {{kName, 1}, {kSequence, 1}}, 12469);
  EXPECT_EQ(device().store.kindOf(oid), ObjectKind::Database);
  const auto database = device().databaseStore.use(oid);
  ASSERT_TRUE(database);
  EXPECT_EQ(database->name, u"\\QorvContracts");
  EXPECT_EQ(database->type, 12469u);
  ASSERT_EQ(database->orders.size(), 2u);
  EXPECT_EQ(database->orders[1].properties[0].id, kSequence);
  EXPECT_EQ(database->orders[1].properties[0].flags, CEDB_SORT_DESCENDING);
}

TEST_F(Databases, takeOfADescriptionWhatItsFlagsCallValid) {
  CEDBASEINFOEX given = description(u"\\A");
  given.dwDbaseType = 7;
  given.wNumSortOrder = 1;
  given.rgSortSpecs[0] = orderOn({{kName, 0}});
  given.dwFlags |= CEDB_NOCOMPRESS;
  const auto plain = device().databaseStore.use(CeCreateDatabaseEx2(&volume_, &given));
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->type, 0u);
  EXPECT_EQ(plain->flags, 0u);
  EXPECT_TRUE(plain->orders.empty());
  given.dwFlags |= CEDB_VALIDTYPE | CEDB_VALIDSORTSPEC | CEDB_VALIDDBFLAGS;
  given.szDbaseName[1] = u'B';
  const auto full = device().databaseStore.use(CeCreateDatabaseEx2(&volume_, &given));
  ASSERT_TRUE(full);
  EXPECT_EQ(full->name, u"\\B");
  EXPECT_EQ(full->type, 7u);
  EXPECT_EQ(full->flags, CEDB_NOCOMPRESS);
  EXPECT_EQ(full->orders.size(), 1u);
}

TEST_F(Databases, haveEachANameOfTheirOwn) {
  EXPECT_NE(create(u"\\A", {}), 0u);
  EXPECT_EQ(create(u"\\a", {}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_DUP_NAME);
  CEDBASEINFOEX given = description(u"\\A");
  EXPECT_EQ(CeCreateDatabaseEx2(&volume_, &given), 0u);
  EXPECT_EQ(GetLastError(), ERROR_DUP_NAME);
}

TEST_F(Databases, haveNamesOfUpTo32Characters) {
  const std::u16string longest(32, u'n');
  CEDBASEINFOEX given = description(longest);
  EXPECT_NE(CeCreateDatabaseEx2(&volume_, &given), 0u);
  EXPECT_EQ(errorOfOpening(longest), ERROR_SUCCESS);
  EXPECT_EQ(create(longest + u'n', {}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

struct Refusal {
  const char* why;
  void (*spoil)(CEDBASEINFOEX& description);
};

class RefusedDescription : public Databases, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedDescription, makesNoDatabase) {
  CEDBASEINFOEX given = description(u"\\A");
  given.dwFlags |= CEDB_VALIDSORTSPEC;
  given.wNumSortOrder = 4;
  for (SORTORDERSPECEX& order : given.rgSortSpecs) order = orderOn({{kName, 0}, {kSequence, 0}});
  GetParam().spoil(given);
  EXPECT_EQ(CeCreateDatabaseEx2(&volume_, &given), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(device().databaseStore.catalog().list().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Descriptions, RefusedDescription,
    testing::Values(
        Refusal{"Version", [](CEDBASEINFOEX& given) { given.wVersion = 2; }},
        Refusal{"NameNotValid", [](CEDBASEINFOEX& given) { given.dwFlags = CEDB_VALIDSORTSPEC; }},
        Refusal{"NoName", [](CEDBASEINFOEX& given) { given.szDbaseName[0] = 0; }},
        Refusal{"BackslashAtTheEnd", [](CEDBASEINFOEX& given) { given.szDbaseName[1] = u'\\'; }},
        Refusal{"FiveOrders", [](CEDBASEINFOEX& given) { given.wNumSortOrder = 5; }},
        Refusal{"OrderVersion", [](CEDBASEINFOEX& given) { given.rgSortSpecs[3].wVersion = 0; }},
        Refusal{"NoKeys", [](CEDBASEINFOEX& given) { given.rgSortSpecs[2].wNumProps = 0; }},
        Refusal{"FourKeys", [](CEDBASEINFOEX& given) { given.rgSortSpecs[2].wNumProps = 4; }},
        Refusal{"Blob", [](CEDBASEINFOEX& given) { given.rgSortSpecs[1].rgPropID[1] = 0x00010041; }},
        Refusal{"NoType", [](CEDBASEINFOEX& given) { given.rgSortSpecs[1].rgPropID[1] = 0x00010000; }}),
    [](const auto& fact) { return fact.param.why; });

TEST_F(Databases, areNotMadeOfNothing) {
  EXPECT_EQ(CeCreateDatabase(nullptr, 0, 0, nullptr), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  std::u16string name = u"\\A";
  EXPECT_EQ(CeCreateDatabase(name.data(), 0, 1, nullptr), 0u);
  EXPECT_EQ(create(name, std::vector<SORTORDERSPEC>(5, {kName, 0})), 0u);
  EXPECT_EQ(create(name, {{0x00010041, 0}}), 0u);
  EXPECT_EQ(CeCreateDatabaseEx2(&volume_, nullptr), 0u);
  CEDBASEINFOEX given = description(u"\\A");
  EXPECT_EQ(CeCreateDatabaseEx2(nullptr, &given), 0u);
  CEGUID elsewhere{1, 2, 3, 4};
  EXPECT_EQ(CeCreateDatabaseEx2(&elsewhere, &given), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Databases, openByNameAndTellTheirIdentifier) {
  const CEOID made = create(u"\\A", {});
  CEOID oid = 0;
  const HANDLE handle = CeOpenDatabaseEx2(&volume_, &oid, std::u16string(u"\\a").data(), nullptr, 0, nullptr);
  EXPECT_EQ(oid, made);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Databases, openByIdentifierWhateverTheName) {
  CEOID oid = create(u"\\A", {});
  create(u"\\B", {});
  const CEOID before = oid;
  const HANDLE handle = CeOpenDatabaseEx2(&volume_, &oid, std::u16string(u"\\B").data(), nullptr, 0, nullptr);
  EXPECT_NE(handle, INVALID_HANDLE_VALUE);
  EXPECT_EQ(oid, before);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Databases, openByNameOnAnyVolumeWhateverTheIdentifier) {
  const CEOID made = create(u"\\A", {});
  CEGUID any = kInvalidVolume;
  CEOID oid = 12345;
  const HANDLE handle = CeOpenDatabaseEx2(&any, &oid, std::u16string(u"\\A").data(), nullptr, 0, nullptr);
  EXPECT_EQ(oid, made);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Databases, openOnTheOrderWithTheProperty) {
  const CEOID oid = create(u"\\A", {{kName, 0}, {kSequence, CEDB_SORT_DESCENDING}});
  // The caller's flags do not matter: the order has its own.
  const HANDLE handle = open(oid, kSequence);
  for (const LONG sequence : {1, 3, 2}) EXPECT_NE(write(handle, 0, {number(kSequence, sequence)}), 0u);
  EXPECT_EQ(sequences(handle), (std::vector<LONG>{3, 2, 1}));
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_EQ(open(oid, kItem), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Databases, openOnTheFirstRecord) {
  const HANDLE handle = openWith({3, 1, 2});
  EXPECT_EQ(sequenceHere(handle), 1);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Databases, thatAreNotThereDoNotOpen) {
  EXPECT_EQ(errorOfOpening(u"\\A"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(open(12345), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  CEOID folder = device().fileTree.locate(u"\\Temp").node->oid;
  EXPECT_EQ(open(folder), INVALID_HANDLE_VALUE);
}

TEST_F(Databases, doNotOpenWithoutVolumeIdentifierOrName) {
  CEOID oid = create(u"\\A", {});
  std::u16string name = u"\\A";
  EXPECT_EQ(CeOpenDatabaseEx2(nullptr, &oid, name.data(), nullptr, 0, nullptr), INVALID_HANDLE_VALUE);
  EXPECT_EQ(CeOpenDatabaseEx2(&volume_, nullptr, name.data(), nullptr, 0, nullptr), INVALID_HANDLE_VALUE);
  oid = 0;
  EXPECT_EQ(CeOpenDatabaseEx2(&volume_, &oid, nullptr, nullptr, 0, nullptr), INVALID_HANDLE_VALUE);
  EXPECT_EQ(CeOpenDatabaseEx2(&volume_, &oid, name.data(), nullptr, 2, nullptr), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Databases, takeAWishForNotifications) {
  CEOID oid = create(u"\\A", {});
  // The size that the structure has on the device, and here.
  for (const DWORD size : {DWORD{20}, DWORD{sizeof(CENOTIFYREQUEST)}}) {
    CENOTIFYREQUEST request{};
    request.dwSize = size;
    const HANDLE handle = CeOpenDatabaseEx2(&volume_, &oid, nullptr, nullptr, 0, &request);
    EXPECT_NE(handle, INVALID_HANDLE_VALUE) << size;
    EXPECT_TRUE(CloseHandle(handle));
  }
  CENOTIFYREQUEST request{};
  EXPECT_EQ(CeOpenDatabaseEx2(&volume_, &oid, nullptr, nullptr, 0, &request), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Databases, goWithTheirRecordsWhenNobodyHasThemOpen) {
  const HANDLE handle = openWith({1, 2});
  EXPECT_FALSE(CeDeleteDatabaseEx(&volume_, database_));
  EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_TRUE(CeDeleteDatabaseEx(&volume_, database_));
  for (const CEOID oid : {database_, records_[0], records_[1]}) {
    EXPECT_EQ(device().store.kindOf(oid), std::nullopt);
  }
  EXPECT_EQ(errorOfOpening(u"\\Log"), ERROR_FILE_NOT_FOUND);
  EXPECT_FALSE(CeDeleteDatabaseEx(&volume_, database_));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_GT(create(u"\\Log", {}), records_[1]);
}

TEST_F(Databases, closeOnce) {
  const HANDLE handle = openWith({});
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_FALSE(CloseHandle(handle));
  EXPECT_EQ(seek(handle, CEDB_SEEK_BEGINNING, 0), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Databases, doNotShowTheDevicesOwnOrders) {
  const CEOID oid = create(u"\\A", {});
  const auto database = device().databaseStore.use(oid);
  const SortOrder& own = device().databaseStore.ownOrder(*database, kSequence);
  EXPECT_EQ(device().databaseStore.ownOrder(*database, kSequence).id, own.id);
  EXPECT_EQ(open(oid, kSequence), INVALID_HANDLE_VALUE);
  CEOIDINFOEX information{};
  information.wVersion = 1;
  EXPECT_TRUE(CeOidGetInfoEx2(&volume_, oid, &information));
  EXPECT_EQ(information.infDatabase.wNumSortOrder, 0);
}

}  // namespace
}  // namespace emulator::test
