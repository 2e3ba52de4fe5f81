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
  /// Blocks begin at addresses that leave `skew`, 0 or 4, divided by eight: the device promises no more than
  /// four bytes.
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

  /// Lets the n-th allocation of the library's own heap from now on fail, and no other; 0: none.
  void failOwnAllocation(std::uint64_t nth) { failingIn_ = nth; }

 private:
  GuestAddress take(std::size_t size);
  void giveBack(GuestAddress block);

  GuestMemory& memory_;
  GuestAddress skew_;
  std::map<GuestAddress, std::size_t> free_;             ///< runs of free bytes
  std::unordered_map<GuestAddress, std::size_t> taken_;  ///< sizes of what is given out, rounded
  std::unordered_map<BSTR, GuestAddress> texts_;
  std::unordered_map<void*, HANDLE> blocks_;
  std::unordered_map<GuestAddress, std::size_t> own_;  ///< sizes as asked
  HeapUse ownUse_;
  std::uint64_t failingIn_ = 0;
};

}  // namespace emulator::arm
