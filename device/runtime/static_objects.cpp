#include "device/runtime/static_objects.h"

#include <array>
#include <cstddef>

namespace {

using Initializer = void (*)();

struct Ending {
  void (*destroy)(void*);
  void* object;
};

// More than the agent and the run time have together; one too many is refused, and its constructor's
// exception reaches the attach.
constexpr std::size_t kMostEndings = 32;
std::array<Ending, kMostEndings> endings;
std::size_t endingCount = 0;

}  // namespace

extern "C" {

// Laid down by the linker script.
extern const Initializer __init_array_start[];
extern const Initializer __init_array_end[];

// The compiler names the library by this address; one library has only one.
void* __dso_handle = nullptr;

int __aeabi_atexit(void* object, void (*destroy)(void*), void*) {
  if (endingCount == endings.size()) return -1;
  endings[endingCount++] = {destroy, object};
  return 0;
}
}

namespace device {

void makeStaticObjects() {
  for (const Initializer* initializer = __init_array_start; initializer != __init_array_end; ++initializer) {
    (*initializer)();
  }
}

void endStaticObjects() {
  while (endingCount != 0) {
    const Ending& ending = endings[--endingCount];
    ending.destroy(ending.object);
  }
}

}  // namespace device
