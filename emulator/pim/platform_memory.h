// The memory that the object model hands to its callers: texts, and blocks of a heap.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/types.h"

namespace emulator {

/// The process's one heap, which local memory comes from too.
inline HANDLE processHeap() {
  return reinterpret_cast<HANDLE>(std::uintptr_t{0x00030000});
}

/// Where the caller's memory lies is the caller's affair: on the host, or inside an emulated processor's.
/// Counts what was handed out and not freed, so that tests can prove that nothing leaks.
class PlatformMemory {
 public:
  virtual ~PlatformMemory() = default;

  /// A copy with a NUL behind it and its length in bytes as a 32-bit word in front. Null when there is no
  /// room.
  virtual BSTR allocateText(std::u16string_view text) = 0;
  /// Null is allowed.
  virtual void freeText(BSTR text) = 0;
  /// A block of a heap, aligned for any type. Null when there is no room.
  virtual void* allocateBlock(HANDLE heap, std::size_t size) = 0;
  /// False when the heap has no such block.
  virtual bool freeBlock(HANDLE heap, void* block) = 0;

  virtual std::size_t liveTexts() const = 0;
  virtual std::size_t liveBlocks() const = 0;
};

}  // namespace emulator
