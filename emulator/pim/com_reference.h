// An owning pointer to an interface: one reference, released when the pointer goes.
#pragma once

#include <utility>

namespace emulator {

template <typename Interface>
class ComReference {
 public:
  ComReference() = default;
  /// Takes a reference of its own.
  explicit ComReference(Interface* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComReference(const ComReference& other) : ComReference(other.object_) {}
  ComReference(ComReference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComReference& operator=(ComReference other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComReference() {
    if (object_ != nullptr) object_->Release();
  }

  /// Where a call stores the reference that it hands out. The pointer must be empty.
  Interface** out() { return &object_; }
  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace emulator
