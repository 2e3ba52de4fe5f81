// An owned file descriptor.
#pragma once

#include <unistd.h>
#include <utility>

namespace emulator {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int value) : value_(value) {}
  Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, kNone)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (*this) close(value_);
  }

  int get() const { return value_; }
  explicit operator bool() const { return value_ != kNone; }

 private:
  static constexpr int kNone = -1;
  int value_ = kNone;
};

}  // namespace emulator
