// What a person gave us (a file, an address, an argument) can't be used; the message is one line that says
// what and where.
#pragma once

#include <stdexcept>

namespace desktop {

class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace desktop
