// The agent that the session tests run: this program's own objects, or the device library on an emulated processor.
#pragma once

#include <memory>

#include "emulator/pim/platform_memory.h"
#include "platform/rapi_stream.h"

namespace test {

/// A device is current whenever one of these is called.
class TestedAgent {
 public:
  TestedAgent() = default;
  TestedAgent(const TestedAgent&) = delete;
  TestedAgent& operator=(const TestedAgent&) = delete;
  virtual ~TestedAgent() = default;

  /// Where the device has to allocate for the agent; null: in the program's own memory.
  virtual emulator::PlatformMemory* memory() = 0;
  virtual void attach() = 0;
  virtual HRESULT serve(IRAPIStream* stream) = 0;
  /// Lets go of the session that a failed log-on left behind, where that can be done from outside.
  virtual void dropSession() = 0;
  /// Unloads the agent and expects that nothing of it is left. `serve` can't be called any more.
  virtual void detach() = 0;
  /// Whether tests can look into the agent: its objects are part of this program.
  virtual bool isTransparent() const = 0;
  /// The libraries that the agent keeps loaded for the life of the process.
  virtual bool mayKeepLoaded(std::size_t libraries) const = 0;
};

/// The environment chooses: QORV_TEST_AGENT names a device library and QORV_TEST_BASE, in hexadecimal, where
/// it is loaded; without the first it is this program's own objects. Throws SessionError.
std::unique_ptr<TestedAgent> chosenAgent();

}  // namespace test
