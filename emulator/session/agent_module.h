// The agent as a module of the host: loaded, attached, and invoked once for each session.
#pragma once

#include <filesystem>
#include <memory>

#include "emulator/session/agent.h"
#include "platform/system.h"

namespace emulator {

/// The module takes the platform's calls from this program.
class AgentModule final : public Agent {
 public:
  /// Loads the module and tells it that it is `module` on the device. Throws SessionError.
  AgentModule(const std::filesystem::path& file, HMODULE module);
  /// Tells the module and unloads it.
  ~AgentModule() override;

  HRESULT serve(IRAPIStream* stream) override;

  /// The agent that is built or installed together with this program.
  static std::filesystem::path besideProgram();

 private:
  using Export = HRESULT (*)(DWORD inputSize, BYTE* input, DWORD* outputSize, BYTE** output,
                             IRAPIStream* stream);
  using Notification = BOOL (*)(HMODULE module, DWORD reason, void* reserved);
  struct Unloader {
    void operator()(void* library) const;
  };

  std::unique_ptr<void, Unloader> library_;
  HMODULE module_;
  Export export_ = nullptr;
  Notification notify_ = nullptr;
};

}  // namespace emulator
