#include "desktop/command_stream.h"

#include <cerrno>
#include <cstring>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>

#include "desktop/device_error.h"

namespace desktop {

namespace {

constexpr std::chrono::milliseconds kWaitStep{5};
/// How long an ended stream may run ahead of the end of its command.
constexpr Seconds kEndLag{1};

std::string spellStatus(int status) {
  if (WIFSIGNALED(status)) return "ended by signal " + std::to_string(WTERMSIG(status));
  return "ended with status " + std::to_string(WEXITSTATUS(status));
}

/// What the child does between fork and its new program: only calls that are safe there.
[[noreturn]] void becomeCommand(int socket, const char* command) {
  constexpr int kNotStarted = 127;  // the shell's own number for it
  ::setpgid(0, 0);
  if (::dup2(socket, STDIN_FILENO) < 0 || ::dup2(socket, STDOUT_FILENO) < 0) ::_exit(kNotStarted);
  ::execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
  ::_exit(kNotStarted);
}

}  // namespace

CommandStream::~CommandStream() {
  stop(kEndLag);
  endGroup();
}

bool CommandStream::awaitEnd(Seconds bound) {
  const auto deadline = std::chrono::steady_clock::now() + bound;
  while (!status_) {
    int status = 0;
    const pid_t ended = ::waitpid(child_, &status, WNOHANG);
    if (ended == child_) status_ = status;
    if (ended < 0 && errno != EINTR) status_ = 0;
    if (status_ || std::chrono::steady_clock::now() >= deadline) break;
    std::this_thread::sleep_for(kWaitStep);
  }
  return status_.has_value();
}

void CommandStream::stop(Seconds patience) {
  SocketStream::finish();
  if (awaitEnd(patience)) return;
  ::kill(-child_, SIGTERM);
  if (awaitEnd(kEndLag)) return;
  ::kill(-child_, SIGKILL);
  awaitEnd(kEndLag);
}

void CommandStream::endGroup() {
  // A group keeps its number for as long as anyone is in it, also when the command itself has ended.
  if (::kill(-child_, SIGTERM) != 0) return;
  const auto deadline = std::chrono::steady_clock::now() + kEndLag;
  while (::kill(-child_, 0) == 0 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(kWaitStep);
  }
  ::kill(-child_, SIGKILL);
}

void CommandStream::finish() {
  stop(timeout());
  if (status_.value_or(0) != 0) throw DeviceRefusal(endReason());
}

std::string CommandStream::endReason() {
  if (awaitEnd(kEndLag)) return name() + " " + spellStatus(*status_);
  return name() + " closed its output";
}

std::unique_ptr<Stream> startCommand(const std::string& command, Seconds timeout) {
  // One socket for both directions: unlike a pipe it can be written to without a signal when nobody reads.
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw NoDevice(std::string("can't start the device's command: ") + std::strerror(errno));
  }
  Descriptor ours(ends[0]);
  const Descriptor theirs(ends[1]);
  const pid_t child = ::fork();
  if (child < 0) throw NoDevice(std::string("can't start the device's command: ") + std::strerror(errno));
  if (child == 0) becomeCommand(theirs.get(), command.c_str());
  // Both sides do it: whichever comes first, the group is there before it is needed.
  ::setpgid(child, child);
  return std::make_unique<CommandStream>(std::move(ours), child, timeout);
}

}  // namespace desktop
