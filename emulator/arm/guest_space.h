// The memory of a device library and the heap in it: there before the device, which allocates in it.
#pragma once

#include "emulator/arm/guest_heap.h"

namespace emulator::arm {

struct GuestSpace {
  /// `heapSkew` is 0 or 4; see GuestHeap.
  explicit GuestSpace(GuestAddress heapSkew = 4) : heap(memory, kHeapStart, kHeapSize, heapSkew) {}

  static constexpr GuestAddress kHeapStart = 0x30000000;
  static constexpr std::size_t kHeapSize = 64u << 20;

  GuestMemory memory;
  GuestHeap heap;
};

}  // namespace emulator::arm
