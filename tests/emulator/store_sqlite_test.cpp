// The SQLite layer: what goes in comes out, statements are re-used, and writing begins a transaction.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "emulator/store/sqlite.h"
#include "tests/emulator/temporary_folder.h"

namespace emulator {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Sqlite : public testing::Test {
 protected:
  Sqlite() {
    db_.execute("PRAGMA encoding = 'UTF-16le'");
    db_.execute("CREATE TABLE thing (id INTEGER PRIMARY KEY, value)");
  }

  /// Stores a value and reads it back as T.
  template <typename T, typename Value>
  T roundTrip(const Value& value) {
    db_.run("INSERT OR REPLACE INTO thing VALUES (1, ?)", value);
    Cursor row = db_.query("SELECT value FROM thing WHERE id = 1");
    EXPECT_TRUE(row.next());
    return row.get<T>(0);
  }

  test::TemporaryFolder folder_;
  Connection db_{folder_.write("things", ""), "things"};
};

TEST_F(Sqlite, keepsIntegersRealsTextsAndBytes) {
  EXPECT_EQ(roundTrip<std::uint32_t>(0xFFFFFFFFu), 0xFFFFFFFFu);
  EXPECT_EQ(roundTrip<std::int64_t>(std::int64_t{-5}), -5);
  EXPECT_EQ(roundTrip<double>(38425.5), 38425.5);
  EXPECT_EQ(roundTrip<std::u16string>(std::u16string(u"Grüße")), u"Grüße");
  EXPECT_EQ(roundTrip<std::string>("plain"), "plain");
  EXPECT_THAT(roundTrip<Bytes>(Bytes{0, 1, 0xFF}), ElementsAre(0, 1, 0xFF));
}

TEST_F(Sqlite, tellsEmptyFromNull) {
  EXPECT_EQ(roundTrip<std::optional<std::u16string>>(u""), std::optional<std::u16string>(u""));
  EXPECT_EQ(roundTrip<std::optional<Bytes>>(Bytes()), std::optional<Bytes>(Bytes()));
  EXPECT_EQ(roundTrip<std::optional<std::u16string>>(nullptr), std::nullopt);
  EXPECT_EQ(roundTrip<std::optional<int>>(std::optional<int>()), std::nullopt);
}

TEST_F(Sqlite, keepsLoneSurrogatesAndNulCharacters) {
  const std::u16string text{u'a', char16_t{0xD800}, u'b', u'\0', char16_t{0xDC00}};
  EXPECT_EQ(roundTrip<std::u16string>(text), text);
}

TEST_F(Sqlite, usesOneStatementTwiceAtTheSameTime) {
  for (int id : {1, 2}) db_.run("INSERT INTO thing VALUES (?, ?)", id, id * 10);
  constexpr std::string_view kById = "SELECT value FROM thing WHERE id = ?";
  Cursor first = db_.query(kById, 1);
  ASSERT_TRUE(first.next());
  Cursor second = db_.query(kById, 2);
  ASSERT_TRUE(second.next());
  EXPECT_EQ(first.get<int>(0), 10);
  EXPECT_EQ(second.get<int>(0), 20);
}

TEST_F(Sqlite, forgetsParametersBetweenTwoUses) {
  constexpr std::string_view kInsert = "INSERT INTO thing VALUES (?, ?)";
  db_.run(kInsert, 1, 77);
  db_.run(kInsert, 2, std::optional<int>());
  Cursor row = db_.query("SELECT value FROM thing WHERE id = 2");
  ASSERT_TRUE(row.next());
  EXPECT_EQ(row.get<std::optional<int>>(0), std::nullopt);
}

TEST_F(Sqlite, beginsATransactionWithTheFirstWriteOnly) {
  EXPECT_TRUE(db_.query("SELECT count(*) FROM thing").next());
  EXPECT_FALSE(db_.inTransaction());
  db_.run("INSERT INTO thing VALUES (1, 1)");
  EXPECT_TRUE(db_.inTransaction());
  db_.commit();
  EXPECT_FALSE(db_.inTransaction());
}

TEST_F(Sqlite, rollbackUndoesWhatWasNotCommitted) {
  db_.run("INSERT INTO thing VALUES (1, 1)");
  db_.commit();
  db_.run("INSERT INTO thing VALUES (2, 2)");
  db_.rollback();
  Cursor row = db_.query("SELECT count(*) FROM thing");
  ASSERT_TRUE(row.next());
  EXPECT_EQ(row.get<int>(0), 1);
}

TEST_F(Sqlite, commitAndRollbackWithoutChangesDoNothing) {
  db_.commit();
  db_.rollback();
  EXPECT_FALSE(db_.inTransaction());
}

TEST_F(Sqlite, namesTheFileInItsErrors) {
  db_.run("INSERT INTO thing VALUES (1, 1)");
  try {
    db_.run("INSERT INTO thing VALUES (1, 2)");
    FAIL() << "a repeated key was taken";
  } catch (const StoreError& error) {
    EXPECT_THAT(error.what(), StartsWith("things: "));
    EXPECT_THAT(error.what(), HasSubstr("UNIQUE"));
  }
  EXPECT_THROW(db_.query("SELECT nothing FROM nowhere"), StoreError);
}

}  // namespace
}  // namespace emulator
