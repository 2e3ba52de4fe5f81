// What keeps sessions from being served.
#pragma once

#include <stdexcept>

namespace emulator {

/// One line that says what and where.
class SessionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace emulator
