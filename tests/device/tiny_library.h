// Device libraries of a few instructions, put together by hand: what the processor does with code that no compiler writes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

using Code = std::vector<std::uint32_t>;

// Instructions that most of them need, with what an assembler calls them.
inline constexpr std::uint32_t kReturn = 0xE1A0F00E;           ///< mov pc, lr
inline constexpr std::uint32_t kReturnOne = 0xE3A00001;        ///< mov r0, #1
inline constexpr std::uint32_t kTakeSlots = 0xE28FCA01;        ///< add ip, pc, #0x1000; the export's first
inline constexpr std::uint32_t kPushLink = 0xE52DE004;         ///< str lr, [sp, #-4]!
inline constexpr std::uint32_t kPopAndReturn = 0xE49DF004;     ///< ldr pc, [sp], #4
inline constexpr std::uint32_t kLinkBehindNext = 0xE1A0E00F;   ///< mov lr, pc
inline constexpr std::uint32_t kCallFirstImport = 0xE59CF000;  ///< ldr pc, [ip]
inline constexpr std::uint32_t kTakeStream = 0xE59D0000;       ///< ldr r0, [sp]; the fifth argument, on entry
inline constexpr std::uint32_t kTakeVtable = 0xE5901000;       ///< ldr r1, [r0]
inline constexpr std::uint32_t kCallRelease = 0xE591F008;      ///< ldr pc, [r1, #8]; the third member

struct TinyLibrary {
  Code session;                        ///< the export's; the import slots lie 0x1008 bytes behind its start
  Code entry = {kReturnOne, kReturn};  ///< for attach and detach
  std::vector<std::string> imports{};  ///< of coredll.dll
  /// Places of words that hold addresses, all in one page, or what else a relocation says: its kind in the upper
  /// four bits of sixteen, the place within the page in the others.
  std::vector<std::uint16_t> relocations{};
  std::uint32_t relocatedPage = 0x1000;  ///< where the export's code begins
  std::string exportName = "rsCeApiMgr";
  std::uint16_t machine = 0x01C0;

  /// The file. Its headers take the first 0x200 bytes, its code the next, its data the rest.
  std::vector<std::uint8_t> bytes() const;
};

}  // namespace test
