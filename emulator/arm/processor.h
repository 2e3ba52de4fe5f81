// The emulated ARM processor: runs the library's functions, and stops where it calls the platform.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "emulator/arm/guest_memory.h"

struct uc_struct;

namespace emulator::arm {

/// The oldest processor of such devices, and three later ones.
enum class Model { StrongArm, XScale, Arm920, Arm926 };

struct ProcessorOptions {
  Model model = Model::StrongArm;
  /// What the stack pointer leaves divided by eight, 0 or 4, when the platform calls the library: it promises
  /// no more than four bytes.
  GuestAddress stackSkew = 4;
};

/// The addresses from kTraps on stand for the platform's functions: the processor stops when it gets there.
inline constexpr GuestAddress kTraps = 0x70000000;
inline constexpr std::size_t kMostTraps = 0x4000;
constexpr GuestAddress trapAddress(std::size_t index) {
  return kTraps + static_cast<GuestAddress>(4 * index);
}

class Processor {
 public:
  /// Does what the platform does at a trap; the arguments are in the registers and on the stack. The result
  /// goes back in register 0. May call the library again.
  using TrapHandler = std::function<std::uint32_t(std::size_t index)>;

  /// Sees the regions that the memory has now; the memory outlives it. Throws GuestFault when the processor
  /// can't be had.
  Processor(GuestMemory& memory, const ProcessorOptions& options, TrapHandler handler);
  Processor(const Processor&) = delete;
  Processor& operator=(const Processor&) = delete;
  ~Processor() = default;

  /// Calls a function of the library; nested calls are fine. Throws GuestFault when the processor can't go
  /// on, or when the function changes registers that it has to keep.
  std::uint32_t call(GuestAddress function, std::span<const std::uint32_t> arguments);

  /// The n-th argument word of the call that trapped.
  std::uint32_t argument(std::size_t index) const;

  /// Since the processor was made. Every instruction counts that was reached, also one whose condition did
  /// not hold.
  std::uint64_t instructions() const { return instructions_; }

 private:
  struct Closer {
    void operator()(uc_struct* engine) const;
  };

  std::uint32_t read(int registerId) const;
  template <typename Registers>
  auto readAll(const Registers& registers) const {
    std::array<std::uint32_t, std::tuple_size_v<Registers>> values{};
    std::ranges::transform(registers, values.begin(), [this](int registerId) { return read(registerId); });
    return values;
  }
  void write(int registerId, std::uint32_t value);
  void mapRegions();
  void addHooks();
  GuestAddress pushArguments(GuestAddress stack, std::span<const std::uint32_t> arguments);
  void run(GuestAddress from);
  void serveTrap(std::size_t index);
  [[noreturn]] void fail(int error);

  GuestMemory& memory_;
  ProcessorOptions options_;
  TrapHandler handler_;
  std::unique_ptr<uc_struct, Closer> engine_;
  GuestAddress stackTop_;
  std::uint64_t instructions_ = 0;
  std::optional<GuestAddress> refused_;  ///< where the library may not read, write or run
  std::size_t depth_ = 0;
};

}  // namespace emulator::arm
