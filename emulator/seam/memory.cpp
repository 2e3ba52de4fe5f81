#include <cstring>

#include "emulator/seam/call.h"
#include "platform/system.h"

using emulator::call;
using emulator::Device;

namespace {

/// Local memory comes from the process's one heap.
const HANDLE kProcessHeap = reinterpret_cast<HANDLE>(std::uintptr_t{0x00030000});
constexpr DWORD kHeapZeroMemory = 8;

void* allocate(Device& device, HANDLE heap, std::size_t size, bool zero) {
  void* const block = device.memory.allocateBlock(heap, size);
  if (block == nullptr) device.lastError.set(ERROR_NOT_ENOUGH_MEMORY);
  if (block != nullptr && zero) std::memset(block, 0, size);
  return block;
}

}  // namespace

HLOCAL LocalAlloc(UINT flags, UINT size) {
  return call<&::LocalAlloc>(
      [&](Device& device) { return allocate(device, kProcessHeap, size, (flags & LMEM_ZEROINIT) != 0); },
      flags, size);
}

HLOCAL LocalFree(HLOCAL block) {
  return call<&::LocalFree>(
      [&](Device& device) -> HLOCAL {
        if (block == nullptr || device.memory.freeBlock(kProcessHeap, block)) return nullptr;
        device.lastError.set(ERROR_INVALID_HANDLE);
        return block;
      },
      block);
}

HANDLE GetProcessHeap() {
  return call<&::GetProcessHeap>([](Device&) { return kProcessHeap; });
}

void* HeapAlloc(HANDLE heap, DWORD flags, DWORD size) {
  return call<&::HeapAlloc>(
      [&](Device& device) { return allocate(device, heap, size, (flags & kHeapZeroMemory) != 0); }, heap,
      flags, size);
}

BOOL HeapFree(HANDLE heap, DWORD flags, void* block) {
  return call<&::HeapFree>(
      [&](Device& device) {
        return device.memory.freeBlock(heap, block) || device.lastError.fail(ERROR_INVALID_PARAMETER);
      },
      heap, flags, block);
}
