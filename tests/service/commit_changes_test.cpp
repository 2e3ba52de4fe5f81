#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "service/change_counter.h"
#include "tests/service/database_test.h"

namespace qorv {
namespace {

using namespace test;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const Bytes kDone = hex("01 00");
const Bytes kFailed = hex("00 01");

Bytes commit(unsigned type = kAppointment) {
  return request(12, type).text(u"desk");
}
Bytes changes(unsigned type = kAppointment) {
  return request(11, type).text(u"desk");
}
Bytes listAll(unsigned type = kAppointment) {
  return request(13, type);
}

class CommitChanges : public DatabaseTest {
 protected:
  CommitChanges() {
    makeLog({change(0x21, 7, 2), change(0x22, 8, 1), change(0x23, 9, 3)});
    setCounter(9);
  }

  /// The calls that a commit is about, in order, from the first on a database on.
  std::vector<std::string> commitCalls() const {
    std::vector<std::string> names;
    for (const std::string& name : callNames()) {
      const bool counts = name.starts_with("Ce") || name.starts_with("RegQuery") ||
                          name.starts_with("RegSet") || name == "CloseHandle" || name == "Sleep";
      if (counts && (!names.empty() || name.starts_with("Ce"))) names.push_back(name);
    }
    return names;
  }

  /// The value becomes that of the counter so many milliseconds from now.
  void setCounterAfter(DWORD milliseconds, DWORD value) {
    device().clock.after(milliseconds, [this, value] { setCounter(value); });
  }
  /// From now on the counter grows by one every second.
  void keepCounting() {
    setCounter(counter().value_or(0) + 1);
    device().clock.after(1000, [this] { keepCounting(); });
  }
};

TEST_F(CommitChanges, afterChangesStoresTheCounterAndLeavesTheLog) {
  makeContracts({contract(u"desk", 2, 3)});
  EXPECT_THAT(session({changes(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 9)));
  EXPECT_THAT(log(), SizeIs(3));
  EXPECT_EQ(counter(), 9u);
}

TEST_F(CommitChanges, readsTheCounterTwiceTwoSecondsApart) {
  makeContracts({contract(u"desk", 2, 3)});
  observeCalls();
  EXPECT_EQ(reply(commit()), kDone);
  EXPECT_THAT(commitCalls(),
              ElementsAre("CeOpenDatabaseEx2", "CeSeekDatabase", "CeReadRecordProps", "RegQueryValueExW",
                          "Sleep", "RegQueryValueExW", "CeWriteRecordProps", "CloseHandle"));
  EXPECT_THAT(sleeps(), ElementsAre(2000u));
  EXPECT_EQ(calls("RegQueryValueExW").back()["args"][1], "\\QorvAppointmentLog");
}

TEST_F(CommitChanges, makesAContractThatIsMissing) {
  EXPECT_EQ(reply(commit()), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 9)));
}

TEST_F(CommitChanges, afterAFullListingEmptiesTheLogAndResetsTheCounter) {
  makeContracts({contract(u"desk", 2, 3)});
  observeCalls();
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 0)));
  EXPECT_THAT(log(), IsEmpty());
  EXPECT_EQ(counter(), 0u);
  // One read of the counter for the sequence; the log; then read, write, read.
  EXPECT_THAT(commitCalls(),
              ElementsAre("CeOpenDatabaseEx2", "CeSeekDatabase", "CeReadRecordProps",         //
                          "RegQueryValueExW", "Sleep", "RegQueryValueExW",                    //
                          "CeOpenDatabaseEx2", "CeSeekDatabase", "CeDeleteRecord",            //
                          "CeSeekDatabase", "CeDeleteRecord", "CeSeekDatabase",               //
                          "CeDeleteRecord", "CeSeekDatabase", "CloseHandle",                  //
                          "RegQueryValueExW", "Sleep", "RegQueryValueExW", "RegSetValueExW",  //
                          "RegQueryValueExW", "Sleep", "RegQueryValueExW",                    //
                          "CeWriteRecordProps", "CloseHandle"));
  EXPECT_THAT(sleeps(), ElementsAre(2000u, 2000u, 2000u));
  // From the beginning; then one forward from where the deleted record was.
  const auto seeks = calls("CeSeekDatabase");
  EXPECT_EQ(seeks[1]["args"][1], 2);
  EXPECT_EQ(seeks[1]["args"][2], 0);
  for (std::size_t i = 2; i < 5; ++i) {
    EXPECT_EQ(seeks[i]["args"][1], 8);
    EXPECT_EQ(seeks[i]["args"][2], 1);
  }
}

TEST_F(CommitChanges, theFullListingMayBeASessionAgo) {
  session({listAll()});
  session({commit()});
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(CommitChanges, aFullListingCountsForOneCommit) {
  session({listAll(), commit()});
  add(kAppointmentLog, {change(0x24, 1, 2)});
  setCounter(1);
  EXPECT_EQ(reply(commit()), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 1)));
  EXPECT_THAT(log(), SizeIs(1));
}

TEST_F(CommitChanges, changesAfterAFullListingMakeTheCommitAnIncrementalOne) {
  session({listAll(), changes(), commit()});
  EXPECT_THAT(log(), SizeIs(3));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 9)));
}

TEST_F(CommitChanges, aFullListingOfAnotherTypeDoesNotCount) {
  session({listAll(kTask), commit()});
  EXPECT_THAT(log(), SizeIs(3));
}

TEST_F(CommitChanges, touchesTheLogAndCounterOfItsTypeAlone) {
  makeLog({change(0x31, 5, 2)}, u"\\QorvTaskLog");
  setCounter(5, u"\\QorvTaskLog");
  session({listAll(), listAll(kTask), commit()});
  EXPECT_THAT(records(u"\\QorvTaskLog", kSequenceTag), SizeIs(1));
  EXPECT_EQ(counter(u"\\QorvTaskLog"), 5u);
  session({commit(kTask)});
  EXPECT_THAT(records(u"\\QorvTaskLog", kSequenceTag), IsEmpty());
  EXPECT_EQ(counter(u"\\QorvTaskLog"), 0u);
  // One contract for both types, and the type that wrote it last.
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 3, 0)));
}

TEST_F(CommitChanges, thatIsCutShortLeavesTheFullListingToTheNext) {
  const auto replies = session({listAll(), commit().slice(0, 7), changes().slice(0, 7), commit()});
  EXPECT_EQ(replies[1], kFailed);
  EXPECT_EQ(replies[3], kDone);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(CommitChanges, missingCounterIsZero) {
  EXPECT_EQ(reply(request(12, kTask).text(u"desk")), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 3, 0)));
  EXPECT_EQ(counter(u"\\QorvTaskLog"), std::nullopt);
}

TEST_F(CommitChanges, counterThatCannotBeReadIsZero) {
  makeContracts({contract(u"desk", 2, 3)});
  observeCalls();
  fault("RegQueryValueExW=2");
  EXPECT_EQ(reply(commit()), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 0)));
  EXPECT_THAT(sleeps(), SizeIs(1));
}

TEST_F(CommitChanges, waitsForACounterThatMovesInFreshPairsOfReads) {
  observeCalls();
  setCounterAfter(1000, 10);
  EXPECT_EQ(reply(commit()), kDone);
  // 9 and, two seconds later, 10; two seconds; then a fresh pair, 10 and 10, although the first
  // of them agrees with the 10 before it.
  EXPECT_THAT(sleeps(), ElementsAre(2000u, 2000u, 2000u));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 10)));
}

TEST_F(CommitChanges, resetsAgainWhenTheCounterDoesNotStayZero) {
  // The commit's read takes the seconds 0 to 2, the reset's 2 to 4, then it writes 0 and reads at 4 and 6.
  setCounterAfter(5000, 3);
  observeCalls();
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  // 0 and 3 differ: a wait to 8, and the pair of 8 and 10 agrees on 3. That is not 0: a wait to 12, a read
  // to 14, the second write, and the read to 16.
  EXPECT_THAT(sleeps(), AllOf(SizeIs(8), Each(2000u)));
  EXPECT_EQ(calls("RegSetValueExW").size(), 2u);
  EXPECT_EQ(counter(), 0u);
}

TEST_F(CommitChanges, resetsAgainWhenTheWriteFails) {
  observeCalls();
  fault("RegSetValueExW=5*2");
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_EQ(calls("RegSetValueExW").size(), 3u);
  // One for the sequence, then three times read and read, and a wait before the second and the third.
  EXPECT_THAT(sleeps(), SizeIs(1 + 3 * 2 + 2));
  EXPECT_EQ(counter(), 0u);
}

TEST_F(CommitChanges, aCounterThatCannotBeWrittenDoesNotHoldTheSessionForever) {
  observeCalls();
  fault("RegSetValueExW=5");
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_THAT(sleeps(), SizeIs(kMostCounterWaits));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 0)));
}

TEST_F(CommitChanges, aCounterThatNeverRestsDoesNotHoldTheSessionForever) {
  observeCalls();
  keepCounting();
  EXPECT_EQ(reply(commit()), kDone);
  EXPECT_THAT(sleeps(), SizeIs(kMostCounterWaits));
  // The counter as it was read last: what came afterwards is listed next time.
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, counter().value())));
}

TEST_F(CommitChanges, resetsTheCounterOfALogThatCannotBeOpened) {
  makeContracts({contract(u"desk", 2, 3)});
  fault("CeOpenDatabaseEx2#2=8");
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_THAT(log(), SizeIs(3));
  EXPECT_EQ(counter(), 0u);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 0)));
}

TEST_F(CommitChanges, passesOverARecordThatCannotBeDeleted) {
  fault("CeDeleteRecord#2=5*1");
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_THAT(log(), ElementsAre(change(0x22, 8, 1)));
}

TEST_F(CommitChanges, endsWhereNoRecordCanBeDeleted) {
  observeCalls();
  fault("CeDeleteRecord=5");
  EXPECT_THAT(session({listAll(), commit()}), ElementsAre(testing::_, kDone));
  EXPECT_EQ(calls("CeDeleteRecord").size(), 3u);
}

}  // namespace
}  // namespace qorv
