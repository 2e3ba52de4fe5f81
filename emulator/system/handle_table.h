// Opaque handles and the kernel objects behind them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>

#include "platform/types.h"

namespace emulator {

/// What a handle stands for. Closing the handle destroys the object.
class KernelObject {
 public:
  KernelObject() = default;
  KernelObject(const KernelObject&) = delete;
  KernelObject& operator=(const KernelObject&) = delete;
  virtual ~KernelObject() = default;
};

/// What CloseHandle closes: files, processes, databases. Searches, registry keys and libraries have calls of
/// their own.
class ClosableObject : public KernelObject {};

/// Owns the open objects. A handle's value fits in 32 bits and is never given out twice, so a closed handle
/// stays invalid. `Handle` is any of the platform's handle types.
class HandleTable {
 public:
  template <typename Handle>
  Handle add(std::unique_ptr<KernelObject> object) {
    return reinterpret_cast<Handle>(insert(std::move(object)));
  }

  /// The object behind a handle; null when the handle is closed, was never given out, or stands for another
  /// kind.
  template <typename Object, typename Handle>
  Object* find(Handle handle) const {
    return dynamic_cast<Object*>(lookUp(reinterpret_cast<std::uintptr_t>(handle)));
  }

  /// Closes a handle of that kind; false as for `find`.
  template <typename Object, typename Handle>
  bool close(Handle handle) {
    if (find<Object>(handle) == nullptr) return false;
    erase(reinterpret_cast<std::uintptr_t>(handle));
    return true;
  }

  /// How many handles of a kind are open; of KernelObject: of all kinds.
  template <typename Object>
  std::size_t count() const {
    std::size_t found = 0;
    for (const auto& [value, object] : objects_) found += dynamic_cast<Object*>(object.get()) != nullptr;
    return found;
  }

 private:
  std::uintptr_t insert(std::unique_ptr<KernelObject> object);
  KernelObject* lookUp(std::uintptr_t value) const;
  void erase(std::uintptr_t value);

  std::map<std::uintptr_t, std::unique_ptr<KernelObject>> objects_;
  /// The value of the last handle. The low numbers are left out, so that a count or a result code is never a
  /// handle.
  std::uintptr_t last_ = 0x00010000;
};

}  // namespace emulator
