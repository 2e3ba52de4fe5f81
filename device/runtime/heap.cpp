// The C library's heap: the device's own, in place of one that has no memory to give.

#include <cstddef>
#include <cstring>
#include <limits>

#include "platform/types.h"

extern "C" {

void* deviceMalloc(std::size_t size) CE_CALL(malloc);
void deviceFree(void* block) CE_CALL(free);

void* malloc(std::size_t size) {
  return deviceMalloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  if (size != 0 && count > std::numeric_limits<std::size_t>::max() / size) return nullptr;
  void* const block = deviceMalloc(count * size);
  return block == nullptr ? nullptr : std::memset(block, 0, count * size);
}

void free(void* block) {
  deviceFree(block);
}
}
