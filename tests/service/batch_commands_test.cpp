#include <chrono>
#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

constexpr unsigned kAdd = 2;
constexpr unsigned kChange = 3;

Bytes entry(unsigned operation, unsigned type, DWORD number, const Bytes& itemRecord) {
  return Bytes().u8(operation).u8(type).u32(number).append(itemRecord);
}

class BatchCommands : public AgentTest {
 protected:
  DWORD add(const Bytes& itemRecord) {
    return reply(request(2, kAppointment).u32(1).append(itemRecord)).dwordAt(2);
  }
  DWORD add(std::u16string_view subject) { return add(simpleAppointment(subject)); }

  /// The size of a record that the device sends for an appointment that does not recur: 7 bytes of header,
  /// two times of 20 bytes, five numbers of 8, four texts of 8 bytes and (characters + 1) * 2 each.
  static std::size_t recordSize(std::size_t characters) {
    return 7 + 2 * 20 + 5 * 8 + 4 * (8 + 2) + characters * 2;
  }
};

TEST_F(BatchCommands, writeAnswersOneHeaderForEachEntry) {
  const DWORD old = add(u"old");
  const Bytes answer = reply(request(15, kAppointment)
                                 .u32(2)
                                 .append(entry(kAdd, kAppointment, 70, simpleAppointment(u"new")))
                                 .append(entry(kChange, kAppointment, old, simpleAppointment(u"changed"))));
  ASSERT_EQ(answer.size(), 20u);
  const DWORD added = answer.dwordAt(2);
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(added).u32(70).u8(1).u8(0).u32(old).u32(old));
  EXPECT_EQ(textOf(outlook(), *appointment(added), &IAppointment::get_Subject), u"new");
  EXPECT_EQ(textOf(outlook(), *appointment(old), &IAppointment::get_Subject), u"changed");
}

TEST_F(BatchCommands, anyOperationButAddChanges) {
  const DWORD old = add(u"old");
  EXPECT_EQ(
      reply(request(15, kAppointment).u32(1).append(entry(0, kAppointment, old, simpleAppointment(u"x")))),
      Bytes().u8(1).u8(0).u32(old).u32(old));
}

TEST_F(BatchCommands, anEntryWhoseItemIsNotThereEndsTheReply) {
  const DWORD old = add(u"old");
  const Bytes answer = reply(request(15, kAppointment)
                                 .u32(2)
                                 .append(entry(kChange, kAppointment, old, simpleAppointment(u"changed")))
                                 .append(entry(kChange, kAppointment, 4711, simpleAppointment(u"lost"))));
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(old).u32(old).u8(0).u8(3));
}

TEST_F(BatchCommands, anEntryOfAnotherTypeEndsTheReply) {
  for (const unsigned type : {0u, 1u, 3u, 4u, 5u, 6u, 255u}) {
    EXPECT_EQ(reply(request(15, kAppointment).u32(1).append(entry(kAdd, type, 1, simpleAppointment(u"x")))),
              hex("00 03"))
        << type;
  }
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 00000000"));
}

TEST_F(BatchCommands, aCutEntryAddsNoHeaderAndSavesNothing) {
  const Bytes first = entry(kAdd, kAppointment, 1, simpleAppointment(u"whole"));
  const Bytes second = entry(kAdd, kAppointment, 2, simpleAppointment(u"cut"));
  for (std::size_t size = 0; size < second.size(); ++size) {
    const auto replies =
        session({request(15, kAppointment).u32(2).append(first).append(second.slice(0, size)),
                 request(6, kAppointment), request(5, kAppointment)});
    EXPECT_EQ(replies[0].size(), 10u) << size;
    EXPECT_EQ(replies[1], hex("01 00 01000000")) << size;
  }
}

TEST_F(BatchCommands, aCountBeyondTheEntriesProcessesWhatIsThere) {
  const Bytes answer = reply(request(15, kAppointment)
                                 .u32(0xFFFFFFFF)
                                 .append(entry(kAdd, kAppointment, 1, simpleAppointment(u"only"))));
  EXPECT_EQ(answer.size(), 10u);
}

TEST_F(BatchCommands, writeOfNothingIsAnEmptyReply) {
  EXPECT_EQ(reply(request(15, kAppointment).u32(0)), Bytes());
}

TEST_F(BatchCommands, deleteAnswersWhatWasDeleted) {
  const DWORD first = add(u"a");
  const DWORD second = add(u"b");
  EXPECT_EQ(reply(request(17, kAppointment).u32(4).u32(second).u32(4711).u32(first).u32(first)),
            Bytes().u32(second).u32(first));
}

TEST_F(BatchCommands, deleteOfNothingIsAnEmptyReply) {
  EXPECT_EQ(reply(request(17, kAppointment).u32(0)), Bytes());
  EXPECT_EQ(reply(request(17, kAppointment).u32(3)), Bytes());
}

TEST_F(BatchCommands, deleteStopsBeforeAnAnswerThatHasNoRoom) {
  // A deletion that succeeds and deletes nothing, so that one OID can be deleted again and again: it fits
  // 0x36000 / 4 = 55296 times.
  const DWORD oid = add(u"a");
  fault("IAppointment.Delete=0");
  Bytes bytes = request(17, kAppointment).u32(55300);
  for (int i = 0; i < 55300; ++i) bytes.u32(oid);
  EXPECT_EQ(reply(bytes).size(), 0x36000u);
}

TEST_F(BatchCommands, readOfNothingIsTheHeaderAlone) {
  EXPECT_EQ(reply(request(16, kAppointment).u32(0)), hex("01 00 00000000 00"));
}

TEST_F(BatchCommands, readAnswersHeaderAndRecordsAndTheLastRecordsFieldCount) {
  const DWORD first = add(u"a");
  const DWORD second = add(u"b");
  const Bytes answer = reply(request(16, kAppointment).u32(2).u32(first).u32(second));
  // 11 fields: start, end, sensitivity, busy status, reminder, reminder set, all day and four texts.
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 02000000 0B"));
  ASSERT_EQ(answer.size(), 7 + 2 * recordSize(1));
  EXPECT_EQ(answer.slice(7, 7), Bytes().u8(1).u8(0).u32(first).u8(11));
  EXPECT_EQ(answer.slice(7 + recordSize(1), 7), Bytes().u8(1).u8(0).u32(second).u8(11));
}

TEST_F(BatchCommands, readThatMeetsAnUnknownItemEndsWithSevenZeroBytesAndTheStartedHeader) {
  const DWORD first = add(u"a");
  const Bytes answer = reply(request(16, kAppointment).u32(3).u32(first).u32(4711).u32(first));
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 00000000 00"));
  ASSERT_EQ(answer.size(), 7 + recordSize(1) + 7);
  EXPECT_EQ(answer.slice(7 + recordSize(1), 7), Bytes().zeros(7));
}

TEST_F(BatchCommands, readStopsAtTheEndOfTheRecordInWhichATextWasRefused) {
  // A subject of 4000 characters makes a record of 8127 bytes. 7 + 13 * 8127 = 105658 lie under the limit of
  // 110592; the subject of the 14th would end beyond it, at 105658 + 7 + 40 + 40 + 8 + 8002 > 110592.
  const DWORD oid = add(std::u16string(4000, u's'));
  Bytes bytes = request(16, kAppointment).u32(20);
  for (int i = 0; i < 20; ++i) bytes.u32(oid);
  const Bytes answer = reply(bytes);
  // The refused record goes on with the texts that fit: three empty ones, 10 fields in all.
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 0D000000 0A"));
  EXPECT_EQ(answer.size(), 7 + 13 * recordSize(4000) + (recordSize(0) - 10));
}

/// A daily series with so many of its occurrences deleted, each an exception record of 80 bytes without
/// texts.
Bytes seriesWithDeleted(unsigned count, std::u16string_view subject) {
  const std::chrono::sys_days first = std::chrono::year(2005) / 3 / 14;
  Bytes daily = block(day(2005, 3, 14), day(2005, 3, 14), {.type = 0, .exceptions = count});
  for (unsigned i = 0; i < count; ++i) {
    const std::chrono::year_month_day date(first + std::chrono::days(i + 1));
    const Bytes original = day(int{date.year()}, static_cast<int>(unsigned{date.month()}),
                               static_cast<int>(unsigned{date.day()}));
    daily.append(exception(original, original, original, {.deleted = 1}));
  }
  return record(3)
      .append(textField(1, subject))
      .append(timeField(16, 9))
      .append(Bytes().u32(19).append(daily));
}

TEST_F(BatchCommands, readThatMeetsAnUnknownItemAtTheBuffersEndStaysInside) {
  // A record of a series has 7 + 2 * 20 + 5 * 8 + 4 * 10 + 102 = 229 bytes, 2 for each character and 80 for
  // each exception. With 1376 and 1382 exceptions and 37 characters 7 + 110383 + 110789 = 221179 bytes are
  // written, five short of the buffer's end: the seven bytes that nobody writes have no room.
  const DWORD first = add(seriesWithDeleted(1376, std::u16string(37, u's')));
  const DWORD second = add(seriesWithDeleted(1382, u""));
  const auto replies = session({request(16, kAppointment).u32(3).u32(first).u32(second).u32(4711),
                                request(16, kAppointment).u32(2).u32(first).u32(second)});
  EXPECT_EQ(replies[0].size(), 221179u);
  EXPECT_EQ(replies[0].slice(0, 7), hex("00 00 00000000 00"));
  EXPECT_EQ(replies[1].size(), 221179u);
  EXPECT_EQ(replies[1].slice(0, 7), hex("01 00 02000000 0C"));
}

TEST_F(BatchCommands, readThatDoesNotFitTheBufferEndsWithResultZero) {
  const DWORD first = add(seriesWithDeleted(1376, u""));
  const DWORD second = add(seriesWithDeleted(1400, u""));
  const Bytes answer = reply(request(16, kAppointment).u32(2).u32(first).u32(second));
  EXPECT_EQ(answer.slice(0, 6), hex("00 00 01000000"));
  EXPECT_LE(answer.size(), 0x36000u);
}

TEST_F(BatchCommands, readOfACutRequestReadsTheWholeOids) {
  const DWORD first = add(u"a");
  const Bytes answer = reply(request(16, kAppointment).u32(2).u32(first).u8(1).u8(2));
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 01000000 0B"));
}

}  // namespace
}  // namespace qorv
