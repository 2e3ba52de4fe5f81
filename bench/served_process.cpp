#include "bench/served_process.h"

#include <exception>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/serve.h"

namespace bench {
namespace {

std::filesystem::path filledDevice(const TemporaryFolder& folder,
                                   const std::function<void(emulator::Device&)>& fill) {
  const std::filesystem::path file = folder.path() / "device";
  emulator::Device::create(file, {});
  emulator::Device device(file);
  fill(device);
  device.commit();
  return file;
}

/// Each process keeps its own end alone, so that the other's death shows as an ended session.
pid_t startServing(const std::filesystem::path& file, Loopback& pair) {
  const pid_t child = fork();
  check(child >= 0, "fork");
  if (child > 0) {
    pair.server = {};
    return child;
  }
  try {
    pair.requester = {};
    serve(file, pair.server.get());
    _exit(0);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    _exit(1);
  }
}

}  // namespace

ServedProcess::ServedProcess(const std::function<void(emulator::Device&)>& fill)
    : pair_(connectLoopback()), process_(startServing(filledDevice(folder_, fill), pair_)) {}

ServedProcess::~ServedProcess() {
  pair_.requester = {};
  waitpid(process_, nullptr, 0);
}

}  // namespace bench
