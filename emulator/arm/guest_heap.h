// The device's local heap inside the emulated processor's memory: what the platform allocates for the library.
#pragma once

#include <map>
#include <unordered_map>

#include "emulator/arm/guest_memory.h"
#include "emulator/pim/platform_memory.h"

namespace emulator::arm {

/// What the heap gave out, in bytes.
struct HeapUse {
  std::size_t now = 0;
  std::size_t peak = 0;
};

class GuestHeap final : public PlatformMemory {
 public:
  /// Texts and the library's own blocks begin at addresses that leave `skew`, 0 or 4, divided by eight: the
  /// device promises no more than four bytes.
  GuestHeap(GuestMemory& memory, GuestAddress start, std::size_t size, GuestAddress skew = 0);

  BSTR allocateText(std::u16string_view text) override;
  void freeText(BSTR text) override;
  void* allocateBlock(HANDLE heap, std::size_t size) override;
  bool freeBlock(HANDLE heap, void* block) override;
  std::size_t liveTexts() const override { return texts_.size(); }
  std::size_t liveBlocks() const override { return blocks_.size(); }

  /// The library's own C++ heap. 0 when there is no room.
  GuestAddress allocateOwn(std::size_t size);
  /// 0 is allowed; throws GuestFault for what is no such block.
  void freeOwn(GuestAddress block);
  std::size_t ownBlocks() const { return own_.size(); }
  /// What the library's own heap takes.
  const HeapUse& ownUse() const { return ownUse_; }
  void resetPeak() { ownUse_.peak = ownUse_.now; }

  /// Lets `count` allocations of the library's own heap fail, beginning with the `first` from now on, which
  /// counts from 1; those after them succeed.
  void failOwnAllocations(std::uint64_t first, std::uint64_t count) { failures_ = {first, count, 0}; }
  /// How many have failed since then.
  std::uint64_t failedOwnAllocations() const { return failures_.failed; }

 private:
  struct Failures {
    std::uint64_t first = 0;  ///< counted down to 1
    std::uint64_t count = 0;
    std::uint64_t failed = 0;
  };

  GuestAddress take(std::size_t size);
  bool failsNow();
  void giveBack(GuestAddress block);

  GuestMemory& memory_;
  GuestAddress skew_;
  std::map<GuestAddress, std::size_t> free_;             ///< runs of free bytes
  std::unordered_map<GuestAddress, std::size_t> taken_;  ///< sizes of what is given out, rounded
  std::unordered_map<BSTR, GuestAddress> texts_;
  struct Block {
    HANDLE heap;
    GuestAddress taken;
  };
  std::unordered_map<void*, Block> blocks_;
  std::unordered_map<GuestAddress, std::size_t> own_;  ///< sizes as asked
  HeapUse ownUse_;
  Failures failures_;
};

}  // namespace emulator::arm
