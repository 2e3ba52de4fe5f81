// Why an item of a file can't be taken: thrown while it is read, caught before the next one.
#pragma once

#include <stdexcept>

namespace desktop {

class ItemRefused : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace desktop
