#include "emulator/arm/callbacks.h"

#include <algorithm>
#include <array>
#include <memory>

namespace emulator::arm {

namespace {

/// The agent has one window class.
constexpr std::size_t kMostProcedures = 4;

struct GuestProcedure {
  const Callbacks* owner = nullptr;
  const GuestCall* call = nullptr;
  GuestAddress function = 0;
};

// A window procedure is a plain function and is told nothing of its owner, so each has a slot of its own.
std::array<GuestProcedure, kMostProcedures> procedures;

std::uint32_t word(const void* handle) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle));
}

template <std::size_t Slot>
LRESULT callProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const GuestProcedure& procedure = procedures[Slot];
  const std::array arguments = {word(window), message, static_cast<std::uint32_t>(wParam),
                                static_cast<std::uint32_t>(lParam)};
  return static_cast<std::int32_t>((*procedure.call)(procedure.function, arguments));
}

template <std::size_t... Slots>
constexpr std::array<WNDPROC, kMostProcedures> slotFunctions(std::index_sequence<Slots...>) {
  return {&callProcedure<Slots>...};
}
constexpr auto kSlotFunctions = slotFunctions(std::make_index_sequence<kMostProcedures>{});

// The heap that the bytes of a stream lie in while the library moves them; no program has it.
const HANDLE kScratchHeap = reinterpret_cast<HANDLE>(std::uintptr_t{0x00030004});

/// A block of the library's memory for one call.
class Scratch {
 public:
  Scratch(GuestHeap& heap, std::size_t size) : heap_(heap), block_(heap.allocateBlock(kScratchHeap, size)) {
    if (block_ == nullptr) throw std::bad_alloc();
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { heap_.freeBlock(kScratchHeap, block_); }

  std::uint8_t* bytes() const { return static_cast<std::uint8_t*>(block_); }

 private:
  GuestHeap& heap_;
  void* block_;
};

}  // namespace

struct Callbacks::GuestStream {
  Callbacks* owner;
  std::uint32_t cookie;
  GuestAddress function;
};

Callbacks::Callbacks(GuestMemory& memory, GuestHeap& heap, GuestCall call)
    : memory_(memory), heap_(heap), call_(std::move(call)) {}

Callbacks::~Callbacks() {
  for (GuestProcedure& procedure : procedures) {
    if (procedure.owner == this) procedure = {};
  }
}

WNDPROC Callbacks::windowProcedure(GuestAddress function) {
  if (function == 0) return nullptr;
  const auto known = std::ranges::find_if(procedures, [&](const GuestProcedure& procedure) {
    return procedure.owner == this && procedure.function == function;
  });
  if (known != procedures.end()) return kSlotFunctions[static_cast<std::size_t>(known - procedures.begin())];
  const auto unused = std::ranges::find(procedures, nullptr, &GuestProcedure::owner);
  if (unused == procedures.end())
    throw GuestFault("the library has more window procedures than are emulated");
  *unused = {this, &call_, function};
  return kSlotFunctions[static_cast<std::size_t>(unused - procedures.begin())];
}

EDITSTREAM Callbacks::stream(std::uint32_t cookie, GuestAddress function) {
  if (function == 0) return {cookie, 0, nullptr};
  streams_.push_back(std::make_unique<GuestStream>(GuestStream{this, cookie, function}));
  return {reinterpret_cast<DWORD_PTR>(streams_.back().get()), 0, &moveStream};
}

void Callbacks::endStream(const EDITSTREAM& stream) {
  std::erase_if(streams_,
                [&](const auto& open) { return reinterpret_cast<DWORD_PTR>(open.get()) == stream.dwCookie; });
}

DWORD Callbacks::moveStream(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) {
  const auto& stream = *reinterpret_cast<const GuestStream*>(cookie);
  return stream.owner->move(stream, buffer, count, moved);
}

/// Whether the library takes the bytes or gives them is its own affair, so they go both ways.
DWORD Callbacks::move(const GuestStream& stream, BYTE* buffer, LONG count, LONG* moved) {
  const auto size = static_cast<std::size_t>(std::max(count, LONG{0}));
  const Scratch scratch(heap_, sizeof(LONG) + size);
  std::memcpy(scratch.bytes(), moved, sizeof *moved);
  if (size != 0) std::memcpy(scratch.bytes() + sizeof(LONG), buffer, size);
  const GuestAddress counter = *memory_.find(scratch.bytes());
  const std::array arguments = {stream.cookie, counter + GuestAddress{sizeof(LONG)},
                                static_cast<std::uint32_t>(count), counter};
  const DWORD result = call_(stream.function, arguments);
  std::memcpy(moved, scratch.bytes(), sizeof *moved);
  if (size != 0) std::memcpy(buffer, scratch.bytes() + sizeof(LONG), size);
  return result;
}

}  // namespace emulator::arm
