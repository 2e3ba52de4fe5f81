// The library's functions that the platform calls back: as plain functions of the host, which run them on the processor.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "emulator/arm/guest_heap.h"
#include "emulator/arm/guest_memory.h"
#include "platform/rich_ink.h"
#include "platform/windows.h"

namespace emulator::arm {

/// Runs a function of the library.
using GuestCall =
    std::function<std::uint32_t(GuestAddress function, std::span<const std::uint32_t> arguments)>;

class Callbacks {
 public:
  Callbacks(GuestMemory& memory, GuestHeap& heap, GuestCall call);
  Callbacks(const Callbacks&) = delete;
  Callbacks& operator=(const Callbacks&) = delete;
  ~Callbacks();

  /// The same for the same function. Lives as long as this. Throws GuestFault when there are more than a
  /// library has any use for.
  WNDPROC windowProcedure(GuestAddress function);

  /// A stream whose callback is the library's. Its cookie belongs to this and lives until `endStream`.
  EDITSTREAM stream(std::uint32_t cookie, GuestAddress function);
  void endStream(const EDITSTREAM& stream);

 private:
  struct GuestStream;

  static DWORD moveStream(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved);
  DWORD move(const GuestStream& stream, BYTE* buffer, LONG count, LONG* moved);

  GuestMemory& memory_;
  GuestHeap& heap_;
  GuestCall call_;
  std::vector<std::unique_ptr<GuestStream>> streams_;
};

}  // namespace emulator::arm
