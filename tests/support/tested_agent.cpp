#include "tests/support/tested_agent.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

#include "channel/host_context.h"
#include "channel/module_state.h"
#include "emulator/arm/arm_agent.h"
#include "emulator/system/modules.h"
#include "ink/ink_state.h"
#include "mail/messaging_library.h"

extern "C" HRESULT rsCeApiMgr(DWORD, BYTE*, DWORD*, BYTE**, IRAPIStream* stream);
extern "C" BOOL DllMain(HMODULE module, DWORD reason, void* reserved);

namespace test {

namespace {

/// The agent's objects serve test after test, so each begins with them as they are in a fresh process.
class OwnObjects final : public TestedAgent {
 public:
  emulator::PlatformMemory* memory() override { return nullptr; }
  void attach() override {
    qorv::moduleState() = {};
    qorv::hostContext() = {};
    qorv::messagingLibrary() = {};
    qorv::inkState() = {};
    DllMain(emulator::Modules::agent(), DLL_PROCESS_ATTACH, nullptr);
  }
  HRESULT serve(IRAPIStream* stream) override { return rsCeApiMgr(0, nullptr, nullptr, nullptr, stream); }
  void dropSession() override { qorv::moduleState().session.reset(); }
  void detach() override { qorv::moduleState() = {}; }
  bool isTransparent() const override { return true; }
  bool mayKeepLoaded(std::size_t libraries) const override {
    return libraries == (qorv::messagingLibrary().module ? 1u : 0u);
  }
};

class DeviceLibrary final : public TestedAgent {
 public:
  DeviceLibrary(std::filesystem::path file, const emulator::arm::ArmOptions& options)
      : file_(std::move(file)), options_(options) {}

  emulator::PlatformMemory* memory() override { return &space_.heap; }
  void attach() override {
    ownCode_.attach();
    agent_.emplace(space_, file_, emulator::Modules::agent(), options_);
  }
  HRESULT serve(IRAPIStream* stream) override { return agent_.value().serve(stream); }
  void dropSession() override {}
  void detach() override {
    ownCode_.detach();
    agent_.reset();
    EXPECT_EQ(space_.heap.ownBlocks(), 0u) << "blocks of the library's own heap";
  }
  bool isTransparent() const override { return false; }
  /// The messaging library, if it was used.
  bool mayKeepLoaded(std::size_t libraries) const override {
    return ownCode_.mayKeepLoaded(libraries) || (libraries > 0 && ownCode_.mayKeepLoaded(libraries - 1));
  }

 private:
  OwnObjects ownCode_;  ///< what a test runs of the agent's code beside the sessions
  std::filesystem::path file_;
  emulator::arm::ArmOptions options_;
  emulator::arm::GuestSpace space_;
  std::optional<emulator::arm::ArmAgent> agent_;
};

}  // namespace

std::unique_ptr<TestedAgent> chosenAgent() {
  const char* const file = std::getenv("QORV_TEST_AGENT");
  if (file == nullptr) return std::make_unique<OwnObjects>();
  emulator::arm::ArmOptions options;
  if (const char* const base = std::getenv("QORV_TEST_BASE")) {
    options.base = static_cast<emulator::arm::GuestAddress>(std::stoul(base, nullptr, 16));
  }
  return std::make_unique<DeviceLibrary>(file, options);
}

}  // namespace test
