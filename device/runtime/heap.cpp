// The C library's heap over the device's local heap, in place of its own, which has no memory to give.

#include <cstddef>
#include <limits>

#include "platform/system.h"

extern "C" {

void* malloc(std::size_t size) {
  return LocalAlloc(0, size);
}

void* calloc(std::size_t count, std::size_t size) {
  if (size != 0 && count > std::numeric_limits<std::size_t>::max() / size) return nullptr;
  return LocalAlloc(LMEM_ZEROINIT, count * size);
}

void free(void* block) {
  if (block != nullptr) LocalFree(block);
}
}
