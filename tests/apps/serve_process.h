// A program run by a test: its standard streams, signals and exit status.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

#include "emulator/session/descriptor.h"

namespace serve_test {

struct Outcome {
  int status = -1;  ///< the exit status; negative when a signal ended the program
  std::string output;
  std::string errors;
};

class Process {
 public:
  /// Starts a program with pipes for its standard streams.
  explicit Process(std::vector<std::string> commandLine);
  /// Kills the program when it still runs.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void send(const std::string& bytes);
  void closeInput() { input_ = {}; }
  /// The next line on standard error, without its end.
  std::string errorLine();
  void signal(int number) const;
  /// Reads both outputs to their ends and waits for the program's.
  Outcome wait();

 private:
  pid_t id_ = -1;
  emulator::Descriptor input_;
  emulator::Descriptor output_;
  emulator::Descriptor errors_;
};

/// Runs a program with that input to its end.
Outcome run(std::vector<std::string> commandLine, const std::string& input = {});

}  // namespace serve_test
