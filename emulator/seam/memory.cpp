#include <cstring>

#include "emulator/seam/call.h"
#include "platform/system.h"

using emulator::call;
using emulator::Device;
using emulator::processHeap;

namespace {

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
      [&](Device& device) { return allocate(device, processHeap(), size, (flags & LMEM_ZEROINIT) != 0); },
      flags, size);
}

HLOCAL LocalFree(HLOCAL block) {
  return call<&::LocalFree>(
      [&](Device& device) -> HLOCAL {
        if (block == nullptr || device.memory.freeBlock(processHeap(), block)) return nullptr;
        device.lastError.set(ERROR_INVALID_HANDLE);
        return block;
      },
      block);
}

HANDLE GetProcessHeap() {
  return call<&::GetProcessHeap>([](Device&) { return processHeap(); });
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
