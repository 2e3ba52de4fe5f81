// Owns a file descriptor.
#pragma once

#include <unistd.h>
#include <utility>

namespace desktop {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, kNone)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { reset(); }

  explicit operator bool() const { return number_ != kNone; }
  int get() const { return number_; }
  void reset() {
    if (number_ != kNone) ::close(std::exchange(number_, kNone));
  }

 private:
  static constexpr int kNone = -1;
  int number_ = kNone;
};

}  // namespace desktop
