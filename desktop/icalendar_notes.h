// What one item lost on its way to the device, each thing said once.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace desktop {

class Notes {
 public:
  void add(std::string note) {
    if (std::find(notes_.begin(), notes_.end(), note) == notes_.end()) notes_.push_back(std::move(note));
  }

  std::vector<std::string> take() { return std::move(notes_); }

 private:
  std::vector<std::string> notes_;
};

}  // namespace desktop
