// The rounds that a desktop makes, with the device's own change recorder in between.

#include <gtest/gtest.h>

#include "tests/service/database_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;

class ChangeRound : public DatabaseTest {
 protected:
  static Bytes named(unsigned command) { return request(command, kAppointment).text(u"desk"); }

  Bytes changes() { return reply(named(11)); }
  void commit() { EXPECT_EQ(reply(named(12)), hex("01 00")); }
  DWORD add() { return reply(request(2, kAppointment).u32(1).append(simpleAppointment(u"a"))).dwordAt(2); }
  void change(DWORD oid) { reply(request(3, kAppointment).u32(oid).append(simpleAppointment(u"b"))); }
  void remove(DWORD oid) { EXPECT_EQ(reply(request(4, kAppointment).u32(oid)), hex("01 00")); }

  /// A list of one change.
  static Bytes listOf(DWORD oid, unsigned kind) { return hex("01 00 01000000 00").u32(oid).u8(kind); }
};

const Bytes kNothing = hex("01 00 00000000 00");

TEST_F(ChangeRound, eachCommitMakesTheChangesBeforeItOld) {
  EXPECT_EQ(reply(named(8)), hex("01 00"));
  const DWORD oid = add();
  EXPECT_EQ(changes(), listOf(oid, 1));
  EXPECT_EQ(changes(), listOf(oid, 1)) << "until the desktop commits";
  commit();
  EXPECT_EQ(changes(), kNothing);
  change(oid);
  EXPECT_EQ(changes(), listOf(oid, 2));
  commit();
  remove(oid);
  EXPECT_EQ(changes(), listOf(oid, 3));
  commit();
  EXPECT_EQ(changes(), kNothing);
}

TEST_F(ChangeRound, aFullListingStartsTheLogAnew) {
  const DWORD first = add();
  EXPECT_EQ(reply(request(13, kAppointment)), hex("01 00 01000000 00").u32(first));
  commit();
  EXPECT_TRUE(log().empty());
  EXPECT_EQ(changes(), kNothing);
  const DWORD second = add();
  EXPECT_EQ(changes(), listOf(second, 1)) << "from sequence 1 on, which is newer than the contract's 0";
}

TEST_F(ChangeRound, desktopsFollowTheSameChangesAtTheirOwnPace) {
  const DWORD oid = add();
  commit();
  EXPECT_EQ(changes(), kNothing);
  EXPECT_EQ(reply(request(11, kAppointment).text(u"laptop")), listOf(oid, 1));
}

}  // namespace
}  // namespace qorv
