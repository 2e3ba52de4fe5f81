#include "emulator/arm/processor.h"

#include <cstdio>
#include <string>
#include <unicorn/unicorn.h>

namespace emulator::arm {

namespace {

constexpr GuestAddress kStackStart = 0x60000000;
constexpr std::size_t kStackSize = 0x100000;
/// The first trap is no function of the platform's: the library returns to it.
constexpr std::size_t kReturnTrap = 0;

constexpr std::array kArgumentRegisters = {UC_ARM_REG_R0, UC_ARM_REG_R1, UC_ARM_REG_R2, UC_ARM_REG_R3};
/// What a function keeps for its caller.
constexpr std::array kKeptRegisters = {UC_ARM_REG_R4,  UC_ARM_REG_R5,  UC_ARM_REG_R6,
                                       UC_ARM_REG_R7,  UC_ARM_REG_R8,  UC_ARM_REG_R9,
                                       UC_ARM_REG_R10, UC_ARM_REG_R11, UC_ARM_REG_SP};
/// What the call in whose midst the library is called again goes on with; its arguments too.
constexpr std::array kContext = {UC_ARM_REG_R0,  UC_ARM_REG_R1,  UC_ARM_REG_R2, UC_ARM_REG_R3, UC_ARM_REG_R4,
                                 UC_ARM_REG_R5,  UC_ARM_REG_R6,  UC_ARM_REG_R7, UC_ARM_REG_R8, UC_ARM_REG_R9,
                                 UC_ARM_REG_R10, UC_ARM_REG_R11, UC_ARM_REG_SP, UC_ARM_REG_LR, UC_ARM_REG_PC};
/// What the platform's functions leave in the registers that they need not keep.
constexpr std::uint32_t kClobbered = 0xBADC0DE1;

int modelNumber(Model model) {
  switch (model) {
    case Model::StrongArm:
      return UC_CPU_ARM_SA1110;
    case Model::XScale:
      return UC_CPU_ARM_PXA255;
    case Model::Arm920:
      return UC_CPU_ARM_TI925T;
    case Model::Arm926:
      return UC_CPU_ARM_926;
  }
  return UC_CPU_ARM_SA1110;
}

std::uint32_t protection(Access access) {
  switch (access) {
    case Access::Read:
      return UC_PROT_READ;
    case Access::ReadWrite:
      return UC_PROT_READ | UC_PROT_WRITE;
    case Access::ReadExecute:
      return UC_PROT_READ | UC_PROT_EXEC;
  }
  return UC_PROT_NONE;
}

void check(uc_err error) {
  if (error != UC_ERR_OK)
    throw GuestFault(std::string("the processor can't be emulated: ") + uc_strerror(error));
}

void stopAtTrap(uc_engine* engine, std::uint64_t, std::uint32_t, void*) {
  uc_emu_stop(engine);
}

void countBlock(uc_engine*, std::uint64_t address, std::uint32_t size, void* counter) {
  if (address < kTraps) *static_cast<std::uint64_t*>(counter) += size / 4;
}

bool noteRefused(uc_engine*, uc_mem_type, std::uint64_t address, int, std::int64_t, void* refused) {
  *static_cast<std::optional<GuestAddress>*>(refused) = static_cast<GuestAddress>(address);
  return false;
}

/// Unicorn takes every callback as the same kind of pointer.
template <typename Callback>
void* asHook(Callback* callback) {
  return reinterpret_cast<void*>(callback);
}

}  // namespace

void Processor::Closer::operator()(uc_struct* engine) const {
  uc_close(engine);
}

Processor::Processor(GuestMemory& memory, const ProcessorOptions& options, TrapHandler handler)
    : memory_(memory), options_(options), handler_(std::move(handler)) {
  memory_.add("stack", kStackStart, kStackSize, Access::ReadWrite);
  memory_.add("platform", kTraps, wholePages(4 * kMostTraps), Access::ReadExecute);
  stackTop_ = kStackStart + kStackSize - 8 + options_.stackSkew;
  uc_engine* engine = nullptr;
  check(uc_open(UC_ARCH_ARM, UC_MODE_ARM, &engine));
  engine_.reset(engine);
  check(uc_ctl_set_cpu_model(engine, modelNumber(options_.model)));
  mapRegions();
  addHooks();
}

void Processor::mapRegions() {
  for (const auto& region : memory_.regions()) {
    check(uc_mem_map_ptr(engine_.get(), region->start(), region->size(), protection(region->access()),
                         region->bytes()));
  }
}

void Processor::addHooks() {
  uc_hook hook{};
  const GuestAddress last = trapAddress(kMostTraps) - 1;
  check(uc_hook_add(engine_.get(), &hook, UC_HOOK_CODE, asHook(&stopAtTrap), nullptr, kTraps, last));
  check(uc_hook_add(engine_.get(), &hook, UC_HOOK_BLOCK, asHook(&countBlock), &instructions_, 1, 0));
  check(uc_hook_add(engine_.get(), &hook, UC_HOOK_MEM_INVALID, asHook(&noteRefused), &refused_, 1, 0));
}

std::uint32_t Processor::read(int registerId) const {
  std::uint32_t value = 0;
  uc_reg_read(engine_.get(), registerId, &value);
  return value;
}

void Processor::write(int registerId, std::uint32_t value) {
  uc_reg_write(engine_.get(), registerId, &value);
}

std::uint32_t Processor::argument(std::size_t index) const {
  if (index < kArgumentRegisters.size()) return read(kArgumentRegisters[index]);
  const auto above = static_cast<GuestAddress>(4 * (index - kArgumentRegisters.size()));
  return memory_.read<std::uint32_t>(read(UC_ARM_REG_SP) + above);
}

GuestAddress Processor::pushArguments(GuestAddress stack, std::span<const std::uint32_t> arguments) {
  for (std::size_t i = 0; i < std::min(arguments.size(), kArgumentRegisters.size()); ++i) {
    write(kArgumentRegisters[i], arguments[i]);
  }
  if (arguments.size() <= kArgumentRegisters.size()) return stack;
  const auto rest = arguments.subspan(kArgumentRegisters.size());
  // Whole units of eight keep the skew.
  stack -= static_cast<GuestAddress>((rest.size_bytes() + 7) / 8 * 8);
  std::memcpy(memory_.writableAt(stack, rest.size_bytes(), 4), rest.data(), rest.size_bytes());
  return stack;
}

std::uint32_t Processor::call(GuestAddress function, std::span<const std::uint32_t> arguments) {
  const auto interrupted = readAll(kContext);
  const GuestAddress stackPointer = read(UC_ARM_REG_SP);
  const GuestAddress stack =
      depth_ == 0 ? stackTop_ : (stackPointer & ~GuestAddress{7}) - 8 + options_.stackSkew;
  write(UC_ARM_REG_SP, pushArguments(stack, arguments));
  write(UC_ARM_REG_LR, trapAddress(kReturnTrap));
  const auto before = readAll(kKeptRegisters);

  ++depth_;
  run(function);
  --depth_;

  if (readAll(kKeptRegisters) != before) throw GuestFault("a function did not keep its caller's registers");
  const std::uint32_t result = read(UC_ARM_REG_R0);
  for (std::size_t i = 0; i < interrupted.size(); ++i) write(kContext[i], interrupted[i]);
  return result;
}

void Processor::run(GuestAddress from) {
  for (GuestAddress next = from;;) {
    if (const uc_err error = uc_emu_start(engine_.get(), next, 0xFFFFFFFF, 0, 0); error != UC_ERR_OK)
      fail(error);
    const GuestAddress stopped = read(UC_ARM_REG_PC);
    if (stopped < kTraps || stopped >= trapAddress(kMostTraps)) {
      throw GuestFault("the processor stopped outside the platform");
    }
    const std::size_t index = (stopped - kTraps) / 4;
    if (index == kReturnTrap) return;
    serveTrap(index);
    next = read(UC_ARM_REG_LR);
  }
}

void Processor::serveTrap(std::size_t index) {
  const std::uint32_t back = read(UC_ARM_REG_LR);
  write(UC_ARM_REG_R0, handler_(index));
  for (const int scratch : {UC_ARM_REG_R1, UC_ARM_REG_R2, UC_ARM_REG_R3, UC_ARM_REG_R12})
    write(scratch, kClobbered);
  write(UC_ARM_REG_LR, back);
}

void Processor::fail(int error) {
  const GuestAddress place = read(UC_ARM_REG_PC);
  // Within a run of instructions the emulation does not keep the place, so it is near there only.
  char text[96];
  std::snprintf(text, sizeof text, " at 0x%08x, near 0x%08x, called from 0x%08x", refused_.value_or(place),
                place, read(UC_ARM_REG_LR));
  throw GuestFault(std::string("the processor can't go on: ") + uc_strerror(static_cast<uc_err>(error)) +
                   text);
}

}  // namespace emulator::arm
