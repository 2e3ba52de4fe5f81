#include "emulator/arm/guest_heap.h"

#include <algorithm>
#include <iterator>

namespace emulator::arm {

namespace {

constexpr std::size_t kGrain = 8;
/// What a given block's bytes are until they are written, and a freed one's from then on: nobody may take
/// them for zeros.
constexpr int kFresh = 0xCD;
constexpr int kFreed = 0xDD;

}  // namespace

GuestHeap::GuestHeap(GuestMemory& memory, GuestAddress start, std::size_t size, GuestAddress skew)
    : memory_(memory), skew_(skew) {
  memory_.add("heap", start, size, Access::ReadWrite);
  free_.emplace(start + skew_, (size - skew_) / kGrain * kGrain);
}

GuestAddress GuestHeap::take(std::size_t size) {
  const std::size_t rounded = std::max(kGrain, (size + kGrain - 1) / kGrain * kGrain);
  const auto room = std::ranges::find_if(free_, [&](const auto& run) { return run.second >= rounded; });
  if (rounded < size || room == free_.end()) return 0;
  const auto [block, available] = *room;
  free_.erase(room);
  if (available > rounded) free_.emplace(block + static_cast<GuestAddress>(rounded), available - rounded);
  taken_.emplace(block, rounded);
  std::memset(memory_.at(block, rounded), kFresh, rounded);
  return block;
}

void GuestHeap::giveBack(GuestAddress block) {
  const auto found = taken_.find(block);
  std::size_t size = found->second;
  taken_.erase(found);
  std::memset(memory_.at(block, size), kFreed, size);
  const auto after = free_.lower_bound(block);
  if (after != free_.end() && block + size == after->first) {
    size += after->second;
    free_.erase(after);
  }
  const auto next = free_.lower_bound(block);
  if (next != free_.begin()) {
    const auto before = std::prev(next);
    if (before->first + before->second == block) {
      before->second += size;
      return;
    }
  }
  free_.emplace(block, size);
}

BSTR GuestHeap::allocateText(std::u16string_view text) {
  const auto length = static_cast<std::uint32_t>(text.size() * sizeof(char16_t));
  const GuestAddress block = take(sizeof length + length + sizeof(char16_t));
  if (block == 0) return nullptr;
  std::uint8_t* const bytes = memory_.at(block, sizeof length + length + sizeof(char16_t));
  std::memcpy(bytes, &length, sizeof length);
  auto* const characters = reinterpret_cast<BSTR>(bytes + sizeof length);
  if (length != 0) std::memcpy(characters, text.data(), length);
  characters[text.size()] = u'\0';
  texts_.emplace(characters, block);
  return characters;
}

void GuestHeap::freeText(BSTR text) {
  const auto found = texts_.find(text);
  if (found == texts_.end()) return;
  giveBack(found->second);
  texts_.erase(found);
}

/// The host's structures want eight bytes, and the platform lays them out here before the library's.
void* GuestHeap::allocateBlock(HANDLE heap, std::size_t size) {
  const GuestAddress taken = take(size + skew_);
  if (taken == 0) return nullptr;
  void* const bytes = memory_.at(taken + skew_, size);
  blocks_.emplace(bytes, Block{heap, taken});
  return bytes;
}

bool GuestHeap::freeBlock(HANDLE heap, void* block) {
  const auto found = blocks_.find(block);
  if (found == blocks_.end() || found->second.heap != heap) return false;
  const GuestAddress taken = found->second.taken;
  blocks_.erase(found);
  giveBack(taken);
  return true;
}

bool GuestHeap::failsNow() {
  if (failures_.first > 1) {
    --failures_.first;
    return false;
  }
  if (failures_.failed == failures_.count) return false;
  ++failures_.failed;
  return true;
}

GuestAddress GuestHeap::allocateOwn(std::size_t size) {
  if (failsNow()) return 0;
  const GuestAddress block = take(size);
  if (block == 0) return 0;
  own_.emplace(block, size);
  ownUse_.now += size;
  ownUse_.peak = std::max(ownUse_.peak, ownUse_.now);
  return block;
}

void GuestHeap::freeOwn(GuestAddress block) {
  if (block == 0) return;
  const auto found = own_.find(block);
  if (found == own_.end()) throw GuestFault("the library frees what is no block of its heap");
  ownUse_.now -= found->second;
  own_.erase(found);
  giveBack(block);
}

}  // namespace emulator::arm
