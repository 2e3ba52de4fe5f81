// The same sessions with each platform call of theirs failing, once and for good.
#include <map>

#include "tests/ink/note_test.h"

namespace qorv {
namespace {

using namespace test;

class NoteFaults : public NoteTest, public testing::WithParamInterface<const char*> {
 protected:
  /// Everything that can be done with notes. `oid` is a note that is there.
  std::vector<Bytes> requests(DWORD oid) {
    const Bytes commit = request(12, kInkNote).text(u"c");
    const Bytes changes = request(11, kInkNote).text(u"c");
    return {request(6, kInkNote),
            request(13, kInkNote),
            request(7, kInkNote).u32(oid),
            changes,
            commit,
            request(2, kInkNote).u32(1).append(noteRecord(u"New", u"new")),
            request(2, kInkNote).u32(2).append(noteRecord(u"New", u"clash")),
            request(3, kInkNote).u32(oid).append(noteRecord(u"Old", u"changed")),
            changes,
            request(3, kInkNote).u32(oid).append(noteRecord(u"Renamed", u"renamed")),
            request(16, kInkNote).u32(1).u32(oid),
            request(17, kInkNote).u32(1).u32(oid),
            changes,
            request(5, kInkNote),
            commit};
  }

  /// One session with a fault. Every request has its reply.
  void run(const std::string& rule) {
    reloadAgent();
    const DWORD oid = placeNote(u"Old.pwi", u"old");
    clearFaults();
    fault(rule);
    const auto asked = requests(oid);
    const auto answers = session(asked);
    ASSERT_EQ(answers.size(), asked.size());
    // The fixed sizes hold whatever fails.
    EXPECT_EQ(answers[0].size(), 6u);
    for (const std::size_t written : {5u, 6u, 7u, 9u}) EXPECT_EQ(answers[written].size(), 20u);
    for (const std::size_t listed : {3u, 8u, 12u}) {
      EXPECT_EQ(answers[listed].size(), 7 + 5 * answers[listed].dwordAt(2));
    }
    EXPECT_EQ(answers[1].size(), 7 + 4 * answers[1].dwordAt(2));
    for (const std::size_t committed : {4u, 14u}) EXPECT_EQ(answers[committed].size(), 2u);
    EXPECT_EQ(answers[13], hex("01 00"));
  }

  /// How often the session makes a call when nothing fails.
  std::size_t callsOf(const std::string& name) {
    observeCalls();
    const DWORD oid = placeNote(u"Old.pwi", u"old");
    session(requests(oid));
    std::size_t count = 0;
    for (const std::string& made : callNames(name)) count += made == name;
    return count;
  }

  /// After all this the device works as before.
  void expectSound() {
    clearFaults();
    reply(request(5, kInkNote));
    const DWORD oid = add(noteRecord(u"Sound", u"text")).dwordAt(2);
    EXPECT_EQ(read(oid), readNote(oid, u"Sound", u"text"));
    EXPECT_EQ(reply(request(12, kInkNote).text(u"c")), hex("01 00"));
    EXPECT_EQ(reply(request(11, kInkNote).text(u"c")), hex("01 00 00000000 00"));
  }

  void failEachCall() {
    const std::string name = GetParam();
    const std::size_t count = callsOf(name);
    ASSERT_GT(count, 0u) << "the session does not make this call";
    for (std::size_t n = 1; n <= count; ++n) run(name + '#' + std::to_string(n) + "=5*1");
    run(name + "=5");
    expectSound();
  }
};

TEST_P(NoteFaults, everyRequestIsAnsweredAndNothingIsLeftBehind) {
  failEachCall();
  EXPECT_EQ(device().windows.count(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Calls, NoteFaults,
                         testing::Values("GetVersionExW", "LoadLibraryW", "GetProcAddressW", "InitRichInkDLL",
                                         "CreateWindowExW", "SendMessageW", "CreateFileW", "ReadFile",
                                         "WriteFile", "FindFirstFileW", "FindNextFileW", "DeleteFileW",
                                         "GetLastError", "CeOidGetInfoEx2", "CeOpenDatabaseEx2",
                                         "CeSeekDatabase", "CeReadRecordProps", "CeCreateDatabaseEx2",
                                         "CeDeleteDatabaseEx", "CeWriteRecordProps", "CompareFileTime"));

/// What these would have closed stays open, as the fault has it; a new device has nothing of it.
class NoteClosingFaults : public NoteFaults {
 protected:
  void TearDown() override {
    reopen();
    NoteFaults::TearDown();
  }
};

TEST_P(NoteClosingFaults, everyRequestIsAnswered) {
  const std::string name = GetParam();
  if (!canLookInside() && name == "LocalFree") GTEST_SKIP() << "the library's memory outlives the device";
  const std::size_t count = callsOf(name);
  ASSERT_GT(count, 0u);
  for (std::size_t n = 1; n <= count; ++n) run(name + '#' + std::to_string(n) + "=5*1");
}

INSTANTIATE_TEST_SUITE_P(Calls, NoteClosingFaults,
                         testing::Values("DestroyWindow", "CloseHandle", "FindClose", "FreeLibrary",
                                         "LocalFree"));

}  // namespace
}  // namespace qorv
