// Owns a database or file handle and closes it.
#pragma once

#include <utility>

#include "platform/files.h"

namespace qorv {

/// Empty is INVALID_HANDLE_VALUE, what a failed open gives.
class UniqueHandle {
 public:
  UniqueHandle() = default;
  explicit UniqueHandle(HANDLE owned) : handle_(owned) {}
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~UniqueHandle() {
    if (*this) CloseHandle(handle_);
  }

  [[nodiscard]] HANDLE get() const { return handle_; }
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

}  // namespace qorv
