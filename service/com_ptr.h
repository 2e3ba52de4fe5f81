// Owns one reference to an interface and releases it.
#pragma once

#include <utility>

#include "platform/com.h"
#include "platform/errors.h"

namespace qorv {

template <typename Interface>
class ComPtr {
 public:
  ComPtr() = default;
  /// Takes over the caller's reference.
  explicit ComPtr(Interface* owned) : interface_(owned) {}
  ComPtr(const ComPtr&) = delete;
  ComPtr& operator=(const ComPtr&) = delete;
  ComPtr(ComPtr&& other) noexcept : interface_(other.detach()) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    std::swap(interface_, other.interface_);
    return *this;
  }
  ~ComPtr() { reset(); }

  [[nodiscard]] Interface* get() const { return interface_; }
  Interface* operator->() const { return interface_; }
  Interface& operator*() const { return *interface_; }
  explicit operator bool() const { return interface_ != nullptr; }

  /// For an out-parameter; what was held is released first.
  [[nodiscard]] Interface** put() {
    reset();
    return &interface_;
  }

  void reset() {
    if (Interface* held = std::exchange(interface_, nullptr)) held->Release();
  }

  [[nodiscard]] Interface* detach() { return std::exchange(interface_, nullptr); }

 private:
  Interface* interface_ = nullptr;
};

/// The object's other interface, or null when it has none.
template <typename Interface>
ComPtr<Interface> queryInterface(IUnknown& object) {
  void* found = nullptr;
  if (FAILED(object.QueryInterface(kInterfaceId<Interface>, &found))) return {};
  return ComPtr<Interface>(static_cast<Interface*>(found));
}

}  // namespace qorv
