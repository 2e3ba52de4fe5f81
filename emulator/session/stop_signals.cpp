#include "emulator/session/stop_signals.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>

#include "emulator/session/session_error.h"

namespace emulator {

namespace {

// A signal handler reaches nothing but what is global.
volatile sig_atomic_t notified = -1;

extern "C" void notify(int) {
  const int error = errno;
  [[maybe_unused]] const ssize_t written = write(notified, "", 1);
  errno = error;
}

struct sigaction action(void (*handler)(int), int flags) {
  struct sigaction result {};
  result.sa_handler = handler;
  result.sa_flags = flags;
  return result;
}

}  // namespace

StopSignals::StopSignals() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) throw SessionError(std::strerror(errno));
  readable_ = Descriptor(ends[0]);
  writable_ = Descriptor(ends[1]);
  notified = ends[1];
  const auto stop = action(notify, SA_RESETHAND);
  const auto ignore = action(SIG_IGN, 0);
  sigaction(SIGTERM, &stop, &oldTerm_);
  sigaction(SIGINT, &stop, &oldInt_);
  sigaction(SIGPIPE, &ignore, &oldPipe_);
}

StopSignals::~StopSignals() {
  sigaction(SIGTERM, &oldTerm_, nullptr);
  sigaction(SIGINT, &oldInt_, nullptr);
  sigaction(SIGPIPE, &oldPipe_, nullptr);
  notified = -1;
}

}  // namespace emulator
