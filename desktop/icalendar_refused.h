// Why an item of a calendar file can't be taken; thrown while one item is read, caught where the next one
// begins.
#pragma once

#include <stdexcept>

namespace desktop {

class ItemRefused : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace desktop
