// The agent as the device's library: its very instructions, run on an emulated ARM processor.
#pragma once

#include <filesystem>
#include <map>

#include "emulator/arm/guest_space.h"
#include "emulator/arm/pe_image.h"
#include "emulator/arm/processor.h"
#include "emulator/arm/traps.h"
#include "emulator/session/agent.h"
#include "platform/system.h"

namespace emulator::arm {

struct ArmOptions {
  /// Not where the image is linked for, so that its relocations count.
  GuestAddress base = 0x01A40000;
  ProcessorOptions processor;
};

class ArmAgent final : public Agent {
 public:
  /// Loads the library, binds its imports and tells it that it is `module` on the device. What the current
  /// device allocates for the agent lies in `space`, which outlives both. Throws SessionError.
  ArmAgent(GuestSpace& space, const std::filesystem::path& file, HMODULE module,
           const ArmOptions& options = {});
  /// Tells the library and unloads it.
  ~ArmAgent() override;

  HRESULT serve(IRAPIStream* stream) override;

  /// Since the library was loaded.
  std::uint64_t instructions() const { return processor_.instructions(); }

  /// Whether a file is such a library.
  static bool isDeviceLibrary(const std::filesystem::path& file);

 private:
  static PeImage loadImage(GuestSpace& space, const std::filesystem::path& file, const ArmOptions& options);
  GuestAddress exported(const std::string& name) const;
  std::uint32_t notify(DWORD reason);

  /// What the agent adds to the space goes with it.
  class AddedRegions {
   public:
    explicit AddedRegions(GuestMemory& memory) : memory_(memory), before_(memory.regions().size()) {}
    AddedRegions(const AddedRegions&) = delete;
    AddedRegions& operator=(const AddedRegions&) = delete;
    ~AddedRegions() { memory_.dropAfter(before_); }

   private:
    GuestMemory& memory_;
    std::size_t before_;
  };

  std::filesystem::path file_;
  AddedRegions regions_;
  GuestAddress base_;
  HMODULE module_;
  PeImage image_;
  std::vector<Trap> traps_;
  GuestObjects objects_;
  Callbacks callbacks_;
  Border border_;
  Processor processor_;
  bool broken_ = false;
};

}  // namespace emulator::arm
