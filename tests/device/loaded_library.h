// A device library that is loaded on a device of its own.
#pragma once

#include <sstream>

#include "emulator/arm/arm_agent.h"
#include "emulator/device.h"
#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"
#include "tests/emulator/temporary_folder.h"
#include "tests/support/scripted_stream.h"

namespace test {

struct LibraryOptions {
  emulator::arm::GuestAddress heapSkew = 4;
  emulator::arm::ArmOptions arm{};
  emulator::NewDevice device{};
};

/// The device is current as long as this lives.
class LoadedLibrary {
 public:
  /// Throws SessionError when the library can't be loaded.
  explicit LoadedLibrary(const std::filesystem::path& library, const LibraryOptions& options = {})
      : space(options.heapSkew),
        device(made(folder_.file("device"), options.device),
               {emulator::Clock::Pace::Skipping, options.device.hostClock, messages_, &space.heap}),
        current_(device) {
    emulator::provideLibraries(device);
    agent = load(library, options.arm);
  }

  std::unique_ptr<emulator::arm::ArmAgent> load(const std::filesystem::path& library,
                                                const emulator::arm::ArmOptions& options = {}) {
    return std::make_unique<emulator::arm::ArmAgent>(space, library, emulator::Modules::agent(), options);
  }

  /// One session of these requests and the end command; how it ended and what was answered.
  std::pair<HRESULT, std::vector<Bytes>> serve(const std::vector<Bytes>& requests) {
    Bytes script;
    for (const Bytes& bytes : requests) script.append(frame(bytes));
    ScriptedStream stream(script.append(frame(Bytes().u8(1).u8(2))));
    const HRESULT result = agent->serve(&stream);
    return {result, stream.replies()};
  }

 private:
  static const std::string& made(const std::string& path, const emulator::NewDevice& description) {
    emulator::Device::create(path, description);
    return path;
  }

  emulator::test::TemporaryFolder folder_;
  std::ostringstream messages_;

 public:
  emulator::arm::GuestSpace space;
  emulator::Device device;

 private:
  emulator::CurrentDevice current_;

 public:
  std::unique_ptr<emulator::arm::ArmAgent> agent;
};

}  // namespace test
