#include "emulator/system/handle_table.h"

namespace emulator {

std::uintptr_t HandleTable::insert(std::unique_ptr<KernelObject> object) {
  // Multiples of four, as the platform's own: code may keep marks in the two low bits.
  last_ += 4;
  objects_.emplace(last_, std::move(object));
  return last_;
}

KernelObject* HandleTable::lookUp(std::uintptr_t value) const {
  const auto found = objects_.find(value);
  return found == objects_.end() ? nullptr : found->second.get();
}

void HandleTable::erase(std::uintptr_t value) {
  objects_.erase(value);
}

}  // namespace emulator
