// Reaches a device through a command that serves one session on its standard input and output.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>

#include "desktop/socket_stream.h"

namespace desktop {

/// The running command, in a process group of its own; its standard error is ours. The destructor leaves
/// nobody of the group behind.
class CommandStream : public SocketStream {
 public:
  CommandStream(Descriptor socket, pid_t child, Seconds timeout)
      : SocketStream(std::move(socket), "the device's command", timeout), child_(child) {}
  ~CommandStream() override;

  /// Closes the command's input and waits for its end; a command that stays on for the time-out is
  /// terminated. Throws DeviceRefusal when it ends with another status than 0.
  void finish() override;
  std::string endReason() override;

 private:
  bool awaitEnd(Seconds bound);
  void stop(Seconds patience);
  void endGroup();

  pid_t child_;
  std::optional<int> status_;  ///< as waitpid gives it
};

/// Starts the command through the shell. Throws NoDevice when that can't be done.
std::unique_ptr<Stream> startCommand(const std::string& command, Seconds timeout);

}  // namespace desktop
