#include "tests/apps/serve_process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace serve_test {

namespace {

struct Ends {
  Ends() {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    read = emulator::Descriptor(ends[0]);
    write = emulator::Descriptor(ends[1]);
  }
  emulator::Descriptor read;
  emulator::Descriptor write;
};

std::string readAll(const emulator::Descriptor& descriptor) {
  std::string text;
  std::array<char, 4096> buffer;
  for (ssize_t count = 0; (count = read(descriptor.get(), buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

Process::Process(std::vector<std::string> commandLine) {
  Ends in;
  Ends out;
  Ends err;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in.read.get(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out.write.get(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, err.write.get(), STDERR_FILENO);
  std::vector<char*> arguments;
  for (std::string& argument : commandLine) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  EXPECT_EQ(posix_spawn(&id_, arguments[0], &actions, nullptr, arguments.data(), environ), 0)
      << commandLine[0];
  posix_spawn_file_actions_destroy(&actions);
  input_ = std::move(in.write);
  output_ = std::move(out.read);
  errors_ = std::move(err.read);
}

Process::~Process() {
  if (id_ < 0) return;
  kill(id_, SIGKILL);
  waitpid(id_, nullptr, 0);
}

void Process::send(const std::string& bytes) {
  EXPECT_EQ(write(input_.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

std::string Process::errorLine() {
  std::string line;
  char character = 0;
  while (read(errors_.get(), &character, 1) == 1 && character != '\n') line += character;
  return line;
}

void Process::signal(int number) const {
  kill(id_, number);
}

Outcome Process::wait() {
  Outcome outcome;
  std::thread errors([&] { outcome.errors = readAll(errors_); });
  outcome.output = readAll(output_);
  errors.join();
  int status = 0;
  waitpid(id_, &status, 0);
  id_ = -1;
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return outcome;
}

Outcome run(std::vector<std::string> commandLine, const std::string& input) {
  Process process(std::move(commandLine));
  process.send(input);
  process.closeInput();
  return process.wait();
}

}  // namespace serve_test
