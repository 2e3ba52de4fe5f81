// The orders that records are kept in: types, directions, missing properties, letters, several keys.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

constexpr CEPROPID idOf(WORD type) {
  return DWORD{7} << 16 | type;
}

CEPROPVAL filetime(std::uint64_t ticks) {
  CEPROPVAL value{};
  value.propid = idOf(CEVT_FILETIME);
  value.val.filetime = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  return value;
}
CEPROPVAL real(double number) {
  CEPROPVAL value{};
  value.propid = idOf(CEVT_R8);
  value.val.dblVal = number;
  return value;
}
CEPROPVAL of(WORD type, LONG number) {
  CEPROPVAL value = test::number(idOf(type), 0);
  std::memcpy(&value.val, &number, sizeof number);
  return value;
}

struct OrderFact {
  WORD type;
  std::vector<CEPROPVAL> ascending;
};

class OrderOfType : public DatabaseTest, public testing::WithParamInterface<OrderFact> {
 protected:
  /// Writes the values from the last to the first and reads the order back, as places in `ascending`.
  std::vector<LONG> places(DWORD flags) {
    const CEPROPID id = idOf(GetParam().type);
    const auto& values = GetParam().ascending;
    const HANDLE handle = open(create(u"\\A", {{id, flags}}), id);
    for (LONG place = static_cast<LONG>(values.size()); place-- > 0;) {
      EXPECT_NE(write(handle, 0, {values[static_cast<std::size_t>(place)], number(kSequence, place)}), 0u);
    }
    const std::vector<LONG> found = sequences(handle);
    EXPECT_TRUE(CloseHandle(handle));
    return found;
  }
};

TEST_P(OrderOfType, goesUpAndDown) {
  std::vector<LONG> expected;
  for (std::size_t i = 0; i < GetParam().ascending.size(); ++i) expected.push_back(static_cast<LONG>(i));
  EXPECT_EQ(places(0), expected);
  EXPECT_EQ(CeDeleteDatabaseEx(&volume_, device().databaseStore.catalog().find(u"\\A")), TRUE);
  std::ranges::reverse(expected);
  EXPECT_EQ(places(CEDB_SORT_DESCENDING), expected);
}

const char16_t kLong[] =
    u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa";

INSTANTIATE_TEST_SUITE_P(
    Types, OrderOfType,
    testing::Values(
        OrderFact{CEVT_I2,
                  {of(CEVT_I2, -32768), of(CEVT_I2, -1), of(CEVT_I2, 0), of(CEVT_I2, 255), of(CEVT_I2, 256)}},
        OrderFact{CEVT_UI2, {of(CEVT_UI2, 0), of(CEVT_UI2, 255), of(CEVT_UI2, 256), of(CEVT_UI2, 65535)}},
        OrderFact{CEVT_I4,
                  {of(CEVT_I4, -2147483647 - 1), of(CEVT_I4, -256), of(CEVT_I4, -1), of(CEVT_I4, 0),
                   of(CEVT_I4, 65536), of(CEVT_I4, 2147483647)}},
        OrderFact{CEVT_UI4,
                  {of(CEVT_UI4, 0), of(CEVT_UI4, 65536), of(CEVT_UI4, 2147483647), of(CEVT_UI4, -1)}},
        OrderFact{CEVT_BOOL, {of(CEVT_BOOL, 0), of(CEVT_BOOL, 1)}},
        OrderFact{
            CEVT_R8,
            {real(-HUGE_VAL), real(-2.5), real(-1e-300), real(0), real(1e-300), real(0.1), real(HUGE_VAL)}},
        OrderFact{CEVT_FILETIME, {filetime(0), filetime(0xFFFFFFFF), filetime(0x100000000), filetime(~0ULL)}},
        OrderFact{
            CEVT_LPWSTR,
            {text(idOf(CEVT_LPWSTR), u""), text(idOf(CEVT_LPWSTR), u"A"), text(idOf(CEVT_LPWSTR), u"B"),
             text(idOf(CEVT_LPWSTR), u"a"), text(idOf(CEVT_LPWSTR), u"aa"), text(idOf(CEVT_LPWSTR), kLong),
             text(idOf(CEVT_LPWSTR), u"ab"), text(idOf(CEVT_LPWSTR), u"\u0101")}}));

class Order : public DatabaseTest {
 protected:
  /// The sequences of records with these names, null for none, in an order on the name.
  std::vector<LONG> orderOfNames(DWORD flags, const std::vector<const char16_t*>& names) {
    const HANDLE handle = open(create(u"\\A", {{kName, flags}}), kName);
    LONG sequence = 0;
    for (const char16_t* name : names) {
      std::vector<CEPROPVAL> values{number(kSequence, sequence++)};
      if (name != nullptr) values.push_back(text(kName, name));
      EXPECT_NE(write(handle, 0, values), 0u);
    }
    const auto found = sequences(handle);
    EXPECT_TRUE(CloseHandle(handle));
    return found;
  }
};

TEST_F(Order, putsMissingPropertiesLast) {
  EXPECT_EQ(orderOfNames(0, {nullptr, u"b", u"a"}), (std::vector<LONG>{2, 1, 0}));
}

TEST_F(Order, putsMissingPropertiesLastGoingDownToo) {
  EXPECT_EQ(orderOfNames(CEDB_SORT_DESCENDING, {nullptr, u"a", u"b"}), (std::vector<LONG>{2, 1, 0}));
}

TEST_F(Order, putsMissingPropertiesFirstOnDemand) {
  EXPECT_EQ(orderOfNames(CEDB_SORT_UNKNOWNFIRST, {u"b", u"a", nullptr}), (std::vector<LONG>{2, 1, 0}));
}

TEST_F(Order, putsMissingPropertiesFirstGoingDownToo) {
  EXPECT_EQ(orderOfNames(CEDB_SORT_UNKNOWNFIRST | CEDB_SORT_DESCENDING, {u"a", u"b", nullptr}),
            (std::vector<LONG>{2, 1, 0}));
}

TEST_F(Order, tellsCapitalsApartUnlessToldOtherwise) {
  EXPECT_EQ(orderOfNames(0, {u"b", u"B", u"a"}), (std::vector<LONG>{1, 2, 0}));
}

TEST_F(Order, doesNotTellCapitalsApartOnDemand) {
  EXPECT_EQ(orderOfNames(CEDB_SORT_CASEINSENSITIVE, {u"C", u"b", u"A"}), (std::vector<LONG>{2, 1, 0}));
}

TEST_F(Order, findsNamesWithoutRegardToCaseOnDemand) {
  for (const DWORD flags : {DWORD{0}, CEDB_SORT_CASEINSENSITIVE}) {
    const CEOID oid = create(u"\\A", {{kName, flags}});
    const HANDLE handle = open(oid, kName);
    EXPECT_NE(write(handle, 0, {text(kName, u"Grüße")}), 0u);
    EXPECT_EQ(seek(handle, CEDB_SEEK_VALUEFIRSTEQUAL, text(kName, u"GRÜßE")) != 0, flags != 0);
    EXPECT_NE(seek(handle, CEDB_SEEK_VALUEFIRSTEQUAL, text(kName, u"Grüße")), 0u);
    EXPECT_EQ(seek(handle, CEDB_SEEK_VALUEFIRSTEQUAL, text(kName, u"Grü")), 0u);
    EXPECT_TRUE(CloseHandle(handle));
    EXPECT_TRUE(CeDeleteDatabaseEx(&volume_, oid));
  }
}

TEST_F(Order, findsNoRecordWithoutTheProperty) {
  const HANDLE handle = open(create(u"\\A", {{kName, CEDB_SORT_UNKNOWNFIRST}, {kSequence, 0}}), kName);
  const HANDLE last = open(device().databaseStore.catalog().find(u"\\A"), kSequence);
  EXPECT_NE(write(handle, 0, {number(kItem, 1)}), 0u);
  EXPECT_EQ(seek(handle, CEDB_SEEK_VALUESMALLER, text(kName, u"z")), 0u);
  EXPECT_EQ(seek(last, CEDB_SEEK_VALUEGREATER, number(kSequence, -5)), 0u);
  EXPECT_NE(seek(handle, CEDB_SEEK_BEGINNING, 0), 0u);
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_TRUE(CloseHandle(last));
}

TEST_F(Order, isOnePerPropertyAndChosenAtTheOpening) {
  const CEOID oid = create(u"\\A", {{kName, 0}, {kSequence, CEDB_SORT_DESCENDING}});
  const HANDLE byName = open(oid, kName);
  const HANDLE bySequence = open(oid, kSequence);
  for (const auto& [name, sequence] : {std::pair(u"c", 2), std::pair(u"a", 1), std::pair(u"b", 3)}) {
    EXPECT_NE(write(byName, 0, {text(kName, name), number(kSequence, sequence)}), 0u);
  }
  EXPECT_EQ(sequences(byName), (std::vector<LONG>{1, 3, 2}));
  EXPECT_EQ(sequences(bySequence), (std::vector<LONG>{3, 2, 1}));
  EXPECT_TRUE(CloseHandle(byName));
  EXPECT_TRUE(CloseHandle(bySequence));
}

TEST_F(Order, hasUpToThreeKeys) {
  CEDBASEINFOEX description{};
  description.wVersion = 1;
  description.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC;
  description.szDbaseName[0] = u'A';
  description.wNumSortOrder = 1;
  description.rgSortSpecs[0] = orderOn({{kName, 0}, {kItem, CEDB_SORT_DESCENDING}, {kSequence, 0}});
  CEOID oid = CeCreateDatabaseEx2(&volume_, &description);
  ASSERT_NE(oid, 0u);
  SORTORDERSPECEX wanted = orderOn({{kName, 0}, {kItem, 0}, {kSequence, 0}});
  const HANDLE handle = CeOpenDatabaseEx2(&volume_, &oid, nullptr, &wanted, 0, nullptr);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  struct Row {
    const char16_t* name;
    LONG item;
    LONG sequence;
  };
  for (const Row& row :
       {Row{u"b", 1, 5}, Row{u"a", 1, 4}, Row{u"a", 2, 3}, Row{u"a", 2, 2}, Row{u"aa", 9, 1}}) {
    EXPECT_NE(
        write(handle, 0, {text(kName, row.name), number(kItem, row.item), number(kSequence, row.sequence)}),
        0u);
  }
  EXPECT_EQ(sequences(handle), (std::vector<LONG>{2, 3, 4, 1, 5}));
  // A value is sought in the first key.
  EXPECT_NE(seek(handle, CEDB_SEEK_VALUEFIRSTEQUAL, text(kName, u"aa")), 0u);
  EXPECT_EQ(sequenceHere(handle), 1);
  EXPECT_NE(seek(handle, CEDB_SEEK_VALUESMALLER, text(kName, u"aa")), 0u);
  EXPECT_EQ(sequenceHere(handle), 4);
  EXPECT_EQ(seek(handle, CEDB_SEEK_VALUENEXTEQUAL, text(kName, u"a")), 0u);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Order, mayForbidEqualKeys) {
  const CEOID oid = create(u"\\A", {{kName, CEDB_SORT_UNIQUE}});
  const HANDLE handle = open(oid, kName);
  const CEOID first = write(handle, 0, {text(kName, u"a")});
  const CEOID second = write(handle, 0, {text(kName, u"b")});
  EXPECT_EQ(write(handle, 0, {text(kName, u"a")}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_REPEATED_KEY);
  EXPECT_EQ(write(handle, second, {text(kName, u"a")}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_REPEATED_KEY);
  EXPECT_EQ(write(handle, first, {text(kName, u"a"), number(kSequence, 1)}), first);
  // Records without the property are never alike.
  EXPECT_NE(write(handle, 0, {number(kSequence, 1)}), 0u);
  EXPECT_NE(write(handle, 0, {number(kSequence, 1)}), 0u);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Order, mayRequireItsProperty) {
  const HANDLE handle = open(create(u"\\A", {{kName, CEDB_SORT_NONNULL}}), kName);
  EXPECT_EQ(write(handle, 0, {number(kSequence, 1)}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  const CEOID record = write(handle, 0, {text(kName, u"a")});
  EXPECT_EQ(write(handle, record, {deletion(kName)}), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(Order, keepsNegativeZeroWithZero) {
  const CEPROPID id = idOf(CEVT_R8);
  const HANDLE handle = open(create(u"\\A", {{id, 0}}), id);
  EXPECT_NE(write(handle, 0, {real(-0.0)}), 0u);
  EXPECT_NE(seek(handle, CEDB_SEEK_VALUEFIRSTEQUAL, real(0.0)), 0u);
  EXPECT_TRUE(CloseHandle(handle));
}

}  // namespace
}  // namespace emulator::test
