// What keeps sessions from being served.
#pragma once

#include <stdexcept>

namespace emulator {

/// One line that says what and where.
class SessionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The agent itself can't go on; what it did not answer is undone. Another one can be loaded in its place.
class AgentBroken : public SessionError {
 public:
  using SessionError::SessionError;
};

}  // namespace emulator
