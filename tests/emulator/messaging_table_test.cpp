// Tables: columns, the cursor, blocks of rows, orders.
#include "tests/emulator/messaging_test.h"

namespace emulator::test {
namespace {

/// Five messages, in the order in which they arrived.
constexpr const char* kMail = R"({"mail": {"Inbox": [
  {"Id": 50, "Subject": "delta", "Delivered": "2005-03-14T10:00:00.000Z", "Read": true},
  {"Id": 7, "Subject": "Alpha", "Delivered": "2005-03-14T12:00:00.000Z"},
  {"Id": 4294967295, "Subject": "charlie", "Delivered": "2005-03-14T11:00:00.000Z"},
  {"Id": 0, "Subject": "bravo", "Delivered": "2005-03-14T09:00:00.000Z", "Read": true},
  {"Id": 30, "Subject": "alpha"}]}})";

class MessagingTableTest : public MessagingTest {
 protected:
  MessagingTableTest() : MessagingTest(kMail) {}

  std::vector<Oid> idsOf(const Rows& rows) {
    std::vector<Oid> ids;
    for (std::size_t row = 0; row < rows.size(); ++row) ids.push_back(wordOf(entryOf(rows.at(row, 0)), 4));
    return ids;
  }
  std::vector<Oid> next(LONG count) { return idsOf(rows(*table_.get(), count)); }
  ULONG position() {
    ULONG row = kPoison;
    ULONG numerator = kPoison;
    ULONG denominator = kPoison;
    EXPECT_EQ(table_->QueryPosition(&row, &numerator, &denominator), S_OK);
    EXPECT_EQ(numerator, row);
    EXPECT_EQ(denominator, 5u);
    return row;
  }
  std::vector<Oid> sorted(std::initializer_list<SSortOrder> by) {
    std::vector<ULONG> words{static_cast<ULONG>(by.size()), 0, 0};
    for (const SSortOrder& order : by) words.insert(words.end(), {order.ulPropTag, order.ulOrder});
    EXPECT_EQ(table_->SortTable(reinterpret_cast<SSortOrderSet*>(words.data()), 0), S_OK);
    return next(5);
  }

  ComReference<IMAPITable> table_ = contents(PR_CE_IPM_INBOX_ENTRYID);
};

TEST_F(MessagingTableTest, beginsAtTheFirstRowAndGoesOnToTheLast) {
  EXPECT_EQ(rowCount(*table_.get()), 5u);
  EXPECT_EQ(position(), 0u);
  EXPECT_EQ(next(2), (std::vector<Oid>{50, 7}));
  EXPECT_EQ(position(), 2u);
  EXPECT_EQ(next(100), (std::vector<Oid>{4294967295, 0, 30}));
  EXPECT_TRUE(next(1).empty());
  EXPECT_TRUE(next(0).empty());
}

TEST_F(MessagingTableTest, goesBackwardWithANegativeCount) {
  EXPECT_TRUE(next(-1).empty());
  EXPECT_EQ(next(4).size(), 4u);
  EXPECT_EQ(next(-3), (std::vector<Oid>{7, 4294967295, 0}));
  EXPECT_EQ(position(), 1u);
  EXPECT_EQ(next(std::numeric_limits<LONG>::min()), std::vector<Oid>{50});
}

TEST_F(MessagingTableTest, staysWhereItIsWhenAskedTo) {
  SRowSet* set = nullptr;
  ASSERT_EQ(table_->QueryRows(2, TBL_NOADVANCE, &set), S_OK);
  EXPECT_EQ(idsOf(Rows(set)), (std::vector<Oid>{50, 7}));
  EXPECT_EQ(position(), 0u);
}

struct Seek {
  BOOKMARK origin;
  LONG rows;
  LONG sought;
  ULONG position;
};

TEST_F(MessagingTableTest, seeksWithinItsRows) {
  constexpr LONG kMost = std::numeric_limits<LONG>::max();
  constexpr LONG kLeast = std::numeric_limits<LONG>::min();
  for (const Seek& seek : std::initializer_list<Seek>{{BOOKMARK_BEGINNING, 0, 0, 0},
                                                      {BOOKMARK_BEGINNING, 3, 3, 3},
                                                      {BOOKMARK_CURRENT, -1, -1, 2},
                                                      {BOOKMARK_CURRENT, kMost, 3, 5},
                                                      {BOOKMARK_CURRENT, kLeast, -5, 0},
                                                      {BOOKMARK_BEGINNING, -1, 0, 0},
                                                      {BOOKMARK_END, -2, -2, 3},
                                                      {BOOKMARK_END, 9, 0, 5},
                                                      {BOOKMARK_CURRENT, 0, 0, 5}}) {
    LONG sought = 0x5A5A;
    EXPECT_EQ(table_->SeekRow(seek.origin, seek.rows, &sought), S_OK);
    EXPECT_EQ(sought, seek.sought) << seek.origin << ' ' << seek.rows;
    EXPECT_EQ(position(), seek.position) << seek.origin << ' ' << seek.rows;
  }
  EXPECT_EQ(table_->SeekRow(BOOKMARK_BEGINNING, 1, nullptr), S_OK);
  EXPECT_EQ(position(), 1u);
  EXPECT_EQ(table_->SeekRow(3, 0, nullptr), E_INVALIDARG);
}

TEST_F(MessagingTableTest, showsTheColumnsThatAreSetInTheirOrder) {
  ASSERT_EQ(table_->SetColumns(Tags{PR_SUBJECT_W, PR_ENTRYID, PR_ATTACH_NUM, 0x00370000}, 0), S_OK);
  const Rows first = rows(*table_.get(), 1);
  ASSERT_EQ(first.size(), 1u);
  ASSERT_EQ(first[0].cValues, 4u);
  EXPECT_EQ(first.at(0, 0).ulPropTag, PR_SUBJECT_W);
  EXPECT_EQ(std::u16string(first.at(0, 0).Value.lpszW), u"delta");
  EXPECT_EQ(wordOf(entryOf(first.at(0, 1)), 4), 50u);
  // What a message never has.
  EXPECT_EQ(first.at(0, 2).ulPropTag, 0x0E21000Au);
  EXPECT_EQ(first.at(0, 2).Value.err, MAPI_E_NOT_FOUND);
  // Any type of the subject.
  EXPECT_EQ(first.at(0, 3).ulPropTag, PR_SUBJECT_W);
}

TEST_F(MessagingTableTest, refusesColumnsThatAreNone) {
  EXPECT_EQ(table_->SetColumns(nullptr, 0), E_INVALIDARG);
  ULONG none[] = {0, 0};
  EXPECT_EQ(table_->SetColumns(reinterpret_cast<SPropTagArray*>(none), 0), E_INVALIDARG);
  ULONG many[] = {0xFFFFFFFF, PR_ENTRYID};
  EXPECT_EQ(table_->SetColumns(reinterpret_cast<SPropTagArray*>(many), 0), E_INVALIDARG);
  EXPECT_EQ(next(1), std::vector<Oid>{50});
}

TEST_F(MessagingTableTest, putsItsRowsInOtherOrders) {
  using Ids = std::vector<Oid>;
  EXPECT_EQ(sorted({{PR_SUBJECT_W, TABLE_SORT_ASCEND}}), (Ids{7, 30, 0, 4294967295, 50}));
  EXPECT_EQ(sorted({{PR_SUBJECT_W, TABLE_SORT_DESCEND}}), (Ids{50, 4294967295, 0, 7, 30}));
  EXPECT_EQ(sorted({{PR_MESSAGE_FLAGS, TABLE_SORT_DESCEND}, {PR_MESSAGE_DELIVERY_TIME, TABLE_SORT_ASCEND}}),
            (Ids{0, 50, 30, 4294967295, 7}));
  EXPECT_EQ(sorted({}), (Ids{50, 7, 4294967295, 0, 30}));
}

TEST_F(MessagingTableTest, refusesOrdersThatItDoesNotKnow) {
  ULONG bySize[] = {1, 0, 0, PR_MESSAGE_SIZE, TABLE_SORT_ASCEND};
  EXPECT_EQ(table_->SortTable(reinterpret_cast<SSortOrderSet*>(bySize), 0), MAPI_E_NO_SUPPORT);
  ULONG wild[] = {1, 0, 0, PR_SUBJECT_W, 2};
  EXPECT_EQ(table_->SortTable(reinterpret_cast<SSortOrderSet*>(wild), 0), MAPI_E_NO_SUPPORT);
  ULONG grouped[] = {1, 1, 0, PR_SUBJECT_W, TABLE_SORT_ASCEND};
  EXPECT_EQ(table_->SortTable(reinterpret_cast<SSortOrderSet*>(grouped), 0), MAPI_E_NO_SUPPORT);
  ULONG many[] = {0xFFFFFFFF, 0, 0, 0, 0};
  EXPECT_EQ(table_->SortTable(reinterpret_cast<SSortOrderSet*>(many), 0), E_INVALIDARG);
  EXPECT_EQ(table_->SortTable(nullptr, 0), E_INVALIDARG);
  EXPECT_EQ(next(2), (std::vector<Oid>{50, 7}));
}

TEST_F(MessagingTableTest, restrictsToEverythingOnly) {
  EXPECT_EQ(table_->Restrict(nullptr, 0), S_OK);
  EXPECT_EQ(table_->Restrict(poison<SRestriction>(), 0), MAPI_E_NO_SUPPORT);
}

TEST_F(MessagingTableTest, refusesNullPlaces) {
  EXPECT_EQ(table_->GetRowCount(0, nullptr), E_INVALIDARG);
  EXPECT_EQ(table_->QueryRows(1, 0, nullptr), E_INVALIDARG);
  EXPECT_EQ(table_->QueryPosition(nullptr, nullptr, nullptr), E_INVALIDARG);
}

TEST_F(MessagingTableTest, readsWhatTheFolderHoldsAtThatMoment) {
  EXPECT_EQ(next(1), std::vector<Oid>{50});
  device().messaging.mailbox().remove(MailFolder::Inbox, 30);
  EXPECT_EQ(rowCount(*table_.get()), 4u);
  EXPECT_EQ(next(10), (std::vector<Oid>{7, 4294967295, 0}));
}

}  // namespace
}  // namespace emulator::test
