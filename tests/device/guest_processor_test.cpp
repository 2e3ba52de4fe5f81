// What the emulated processor promises a library, and what it does to one that breaks its own promises.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "emulator/arm/traps.h"
#include "emulator/session/session_error.h"
#include "tests/device/loaded_library.h"
#include "tests/device/tiny_library.h"

namespace test {
namespace {

using emulator::SessionError;
using testing::HasSubstr;

class GuestProcessor : public testing::Test {
 protected:
  std::string write(const TinyLibrary& library) {
    const auto bytes = library.bytes();
    return files_.write("tiny.dll", std::string(bytes.begin(), bytes.end()));
  }
  /// What the export returns.
  std::uint32_t run(const TinyLibrary& library, const LibraryOptions& options = {}) {
    LoadedLibrary loaded(write(library), options);
    ScriptedStream stream{Bytes()};
    return static_cast<std::uint32_t>(loaded.agent->serve(&stream));
  }
  /// What is said of a session that the library does not survive. Everything else does.
  std::string failureOf(const TinyLibrary& library) {
    LoadedLibrary loaded(write(library));
    ScriptedStream stream{Bytes()};
    std::string report;
    try {
      loaded.agent->serve(&stream);
      ADD_FAILURE() << "the session ended";
    } catch (const SessionError& error) {
      report = error.what();
    }
    EXPECT_THROW(loaded.agent->serve(&stream), SessionError) << "a broken library is not entered again";
    loaded.agent = nullptr;
    loaded.agent = loaded.load(write({.session = {kReturnOne, kReturn}}));
    EXPECT_EQ(loaded.agent->serve(&stream), 1) << "the device serves another library";
    EXPECT_EQ(report.find('\n'), std::string::npos) << report;
    return report;
  }

  emulator::test::TemporaryFolder files_;
};

TEST_F(GuestProcessor, alignsTheStackToFourBytesOnly) {
  // and r0, sp, #7
  const TinyLibrary library{.session = {0xE20D0007, kReturn}};
  EXPECT_EQ(run(library), 4u);
  EXPECT_EQ(run(library, {.arm = {.processor = {.stackSkew = 0}}}), 0u);
}

TEST_F(GuestProcessor, givesBlocksThatAreAlignedToFourBytesOnly) {
  // mov r0, #16; the block's address, and r0, r0, #7
  const TinyLibrary library{.session = {kTakeSlots, kPushLink, 0xE3A00010, kLinkBehindNext, kCallFirstImport,
                                        0xE2000007, kPopAndReturn},
                            .imports = {"malloc"}};
  EXPECT_EQ(run(library), 4u);
  EXPECT_EQ(run(library, {.heapSkew = 0}), 0u);
}

TEST_F(GuestProcessor, leavesNothingInTheRegistersThatACallNeedNotKeep) {
  // mov r0, r1 and so on: what the register holds after the platform was called.
  for (const std::uint32_t take : {0xE1A00001, 0xE1A00002, 0xE1A00003, 0xE1A0000C}) {
    const TinyLibrary library{
        .session = {kTakeSlots, kPushLink, kLinkBehindNext, kCallFirstImport, take, kPopAndReturn},
        .imports = {"GetTickCount"}};
    EXPECT_EQ(run(library), 0xBADC0DE1u) << std::hex << take;
  }
}

TEST_F(GuestProcessor, keepsTheOtherRegistersAcrossACall) {
  // r4 is put away, takes 1, is looked at after the call, and comes back.
  // stmfd sp!, {r4, lr}; mov r4, #1; the call; mov r0, r4; ldmfd sp!, {r4, pc}
  EXPECT_EQ(run({.session = {kTakeSlots, 0xE92D4010, 0xE3A04001, kLinkBehindNext, kCallFirstImport,
                             0xE1A00004, 0xE8BD8010},
                 .imports = {"GetTickCount"}}),
            1u);
}

TEST_F(GuestProcessor, watchesTheRegistersThatALibraryHasToKeep) {
  // mov r4, #1 to mov r11, #1: the register's number stands in bits 12 to 15.
  for (std::uint32_t number = 4; number <= 11; ++number) {
    EXPECT_THAT(failureOf({.session = {0xE3A00001 | number << 12, kReturn}}),
                HasSubstr("did not keep its caller's registers"));
  }
  // sub sp, sp, #8
  EXPECT_THAT(failureOf({.session = {0xE24DD008, kReturn}}), HasSubstr("did not keep"));
}

TEST(Processor, keepsACallsArgumentsWhileItCallsTheLibraryBack) {
  // Passes its own four arguments on to the first function of the platform: mov r12, #0x70000000; add r12, r12, #4;
  // mov pc, r12.
  const Code passOn{kPushLink, 0xE3A0C207, 0xE28CC004, kLinkBehindNext, 0xE1A0F00C, kPopAndReturn};
  // Leaves 9 in r0 to r3.
  const Code scratch{0xE3A00009, 0xE3A01009, 0xE3A02009, 0xE3A03009, kReturn};
  constexpr emulator::arm::GuestAddress kPassOn = 0x10000;
  constexpr emulator::arm::GuestAddress kScratch = 0x10100;
  emulator::arm::GuestMemory memory;
  memory.add("code", kPassOn, emulator::arm::kPageSize, emulator::arm::Access::ReadExecute);
  std::memcpy(memory.at(kPassOn, passOn.size() * 4), passOn.data(), passOn.size() * 4);
  std::memcpy(memory.at(kScratch, scratch.size() * 4), scratch.data(), scratch.size() * 4);

  std::vector<std::uint32_t> seen;
  emulator::arm::Processor processor(memory, {}, [&](std::size_t) {
    seen.push_back(processor.call(kScratch, {}));
    for (std::size_t i = 0; i < 4; ++i) seen.push_back(processor.argument(i));
    return 7u;
  });
  EXPECT_EQ(processor.call(kPassOn, std::array{1u, 2u, 3u, 4u}), 7u);
  EXPECT_EQ(seen, (std::vector<std::uint32_t>{9, 1, 2, 3, 4}));
}

TEST_F(GuestProcessor, relocatesAddressesThatStandInTheImage) {
  // ldr r0, [pc] reads the word behind the return, at 8, which a relocation of kind 3 names.
  const TinyLibrary library{.session = {0xE59F0000, kReturn, 0x10002000}, .relocations = {0x3008, 0}};
  EXPECT_EQ(run(library), 0x01A42000u);
  EXPECT_EQ(run(library, {.arm = {.base = 0x10000000, .processor = {}}}), 0x10002000u);
  EXPECT_EQ(run(library, {.arm = {.base = 0x00FF0000, .processor = {}}}), 0x00FF2000u);
}

TEST_F(GuestProcessor, callsMembersOfAnObjectInTheOrderOfTheirSlots) {
  // The stream's Write, slot 4, of the four bytes at the instruction after next, with room for their count:
  // sub sp, sp, #4; ldr r0, [sp, #8] (behind the link); ldr r12, [r0]; mov r1, pc; mov r2, #4; mov r3, sp;
  // mov lr, pc; ldr pc, [r12, #16]; add sp, sp, #4.
  const std::string file =
      write({.session = {kPushLink, 0xE24DD004, 0xE59D0008, 0xE590C000, 0xE1A0100F, 0xE3A02004, 0xE1A0300D,
                         kLinkBehindNext, 0xE59CF010, 0xE28DD004, kPopAndReturn}});
  LoadedLibrary loaded(file);
  ScriptedStream stream{Bytes()};
  EXPECT_EQ(loaded.agent->serve(&stream), 0);
  ASSERT_EQ(stream.writes().size(), 1u);
  EXPECT_EQ(stream.writes()[0], hex("0d 30 a0 e1")) << "pc reads as two instructions on: mov r3, sp";
}

struct Wild {
  const char* name;
  TinyLibrary library;
  const char* report;
};

class WildLibrary : public GuestProcessor, public testing::WithParamInterface<Wild> {};

TEST_P(WildLibrary, endsItsSessionWithAReport) {
  EXPECT_THAT(failureOf(GetParam().library), HasSubstr(GetParam().report));
}

// mov r0, #0x12000000 is E3A00412, into r1 E3A01412; addresses of the stack begin with 0x600.
INSTANTIATE_TEST_SUITE_P(
    Instructions, WildLibrary,
    testing::Values(
        // mov r1, #0; ldr r0, [r1]
        Wild{"readsAtNull", {.session = {0xE3A01000, 0xE5910000, kReturn}}, "at 0x00000000, near 0x01a410"},
        // str r0, [pc]
        Wild{"writesIntoItsCode", {.session = {0xE58F0000, kReturn}}, "at 0x01a41008, near 0x01a41000"},
        // mov pc, sp
        Wild{"runsItsStack", {.session = {0xE1A0F00D}}, "at 0x600"},
        // str r0, [sp, #-4]!; b the same
        Wild{"overflowsItsStack", {.session = {0xE52D0004, 0xEAFFFFFD}}, "at 0x5ffffffc"},
        // mov r0, #0x12000000; mov pc, r0
        Wild{"jumpsNowhere", {.session = {0xE3A00412, 0xE1A0F000}}, "at 0x12000000"},
        // the processor's undefined instruction
        Wild{"runsWhatIsNoInstruction", {.session = {0xE7F000F0}}, "at 0x01a41000, near 0x01a41000"}),
    [](const auto& each) { return std::string(each.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Calls, WildLibrary,
    testing::Values(
        // GetTempPathW(16, 0x12000000): mov r0, #16; mov r1, #0x12000000
        Wild{"givesRoomThatIsNotItsOwn",
             {.session = {kTakeSlots, 0xE3A00010, 0xE3A01412, kCallFirstImport}, .imports = {"GetTempPathW"}},
             "32 bytes at 0x12000000 are not the library's"},
        // GetTempPathW(16, its own code): mov r0, #16; mov r1, pc
        Wild{"givesRoomThatCannotBeWritten",
             {.session = {kTakeSlots, 0xE3A00010, 0xE1A0100F, kCallFirstImport}, .imports = {"GetTempPathW"}},
             "32 bytes at 0x01a41010 can't be written"},
        // DeleteFileW(0x12000000)
        Wild{"givesATextThatIsNotItsOwn",
             {.session = {kTakeSlots, 0xE3A00412, kCallFirstImport}, .imports = {"DeleteFileW"}},
             "2 bytes at 0x12000000 are not the library's"},
        // GetSystemTime-like structures too: GetTimeZoneInformation(1): mov r0, #1
        Wild{"givesAnOddAddress",
             {.session = {kTakeSlots, 0xE3A00001, kCallFirstImport}, .imports = {"GetTimeZoneInformation"}},
             "the address 0x00000001 is not aligned to 4 bytes"},
        // free(0x12000000)
        Wild{"freesWhatIsNoBlock",
             {.session = {kTakeSlots, 0xE3A00412, kCallFirstImport}, .imports = {"free"}},
             "frees what is no block"},
        // CompareFileTime(0, 0): mov r0, #0; mov r1, #0
        Wild{"givesNothingWhereAValueIsNeeded",
             {.session = {kTakeSlots, 0xE3A00000, 0xE3A01000, kCallFirstImport},
              .imports = {"CompareFileTime"}},
             "CompareFileTime: a value is needed where the library gives none"},
        // The stream's Release twice; the first leaves nothing.
        Wild{"callsAnObjectThatIsGone",
             {.session = {kPushLink, 0xE59D0004, kTakeVtable, kLinkBehindNext, kCallRelease, 0xE59D0004,
                          kTakeVtable, kLinkBehindNext, kCallRelease, kPopAndReturn}},
             "calls an object that is not there"}),
    [](const auto& each) { return std::string(each.param.name); });

/// Every function of the platform with the same word for each argument, of which none takes more than twelve.
class EveryFunction : public GuestProcessor, public testing::WithParamInterface<std::uint32_t> {
 protected:
  static TinyLibrary calling(std::string_view name) {
    // sub sp, sp, #32
    Code code{kTakeSlots, kPushLink, 0xE24DD020};
    // mov r0, VALUE to mov r3, VALUE: the register's number stands in bits 12 to 15, the value in those below.
    for (std::uint32_t number = 0; number < 4; ++number)
      code.push_back(0xE3A00000 | number << 12 | GetParam());
    // str r0, [sp, #0] to str r0, [sp, #28]
    for (std::uint32_t offset = 0; offset < 32; offset += 4) code.push_back(0xE58D0000 | offset);
    // add sp, sp, #32
    code.insert(code.end(), {kLinkBehindNext, kCallFirstImport, 0xE28DD020, kPopAndReturn});
    return {.session = code, .imports = {std::string(name)}};
  }
};

TEST_P(EveryFunction, returnsOrEndsTheSession) {
  std::size_t ended = 0;
  std::size_t returned = 0;
  for (const emulator::arm::Trap& trap : emulator::arm::platformTraps()) {
    if (trap.interface != nullptr) continue;
    SCOPED_TRACE(trap.name);
    try {
      run(calling(trap.name));
      ++returned;
    } catch (const SessionError& error) {
      EXPECT_THAT(error.what(), HasSubstr("tiny.dll: " + std::string(trap.name) + ": "));
      ++ended;
    }
  }
  EXPECT_GT(ended, 5u);
  EXPECT_GT(returned, 20u);
}

// Null, and 0x12000000, where the library has nothing.
INSTANTIATE_TEST_SUITE_P(Arguments, EveryFunction, testing::Values(0x000u, 0x412u));

}  // namespace
}  // namespace test
