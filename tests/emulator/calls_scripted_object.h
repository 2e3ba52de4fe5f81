// An object of any interface of the platform whose every member is one handler of the test's.
#pragma once

#include <array>
#include <functional>
#include <typeinfo>
#include <utility>

#include "emulator/calls/interfaces.h"

namespace emulator::testing {

/// The arguments of a call as the registers and the stack held them, without the object: a value narrower
/// than a word has arbitrary bits above it, and what lies past a member's last argument means nothing.
inline constexpr std::size_t kMostArguments = 11;
using RawArguments = std::array<std::uint64_t, kMostArguments>;

/// What a raw argument points to.
template <typename T>
T& behind(std::uint64_t raw) {
  return *reinterpret_cast<T*>(raw);
}

/// Laid out as the compiler lays out an object of the interface: the first word points behind what
/// identifies the class, to one function per slot.
template <typename T>
class ScriptedObject {
 public:
  using Handler = std::function<std::uint64_t(std::size_t slot, const RawArguments& arguments)>;

  explicit ScriptedObject(Handler handler) : handler_(std::move(handler)) {}
  ScriptedObject(const ScriptedObject&) = delete;
  ScriptedObject& operator=(const ScriptedObject&) = delete;

  T* get() { return reinterpret_cast<T*>(this); }

 private:
  static constexpr std::size_t kSlots = AllMembers<T>::kSize;

  struct Vtable {
    std::ptrdiff_t offsetToTop = 0;
    const std::type_info* type = &typeid(T);
    std::array<void*, kSlots> slots = functions(std::make_index_sequence<kSlots>{});
  };

  template <std::size_t Slot>
  static std::uint64_t called(ScriptedObject* self, std::uint64_t a0, std::uint64_t a1, std::uint64_t a2,
                              std::uint64_t a3, std::uint64_t a4, std::uint64_t a5, std::uint64_t a6,
                              std::uint64_t a7, std::uint64_t a8, std::uint64_t a9, std::uint64_t a10) {
    return self->handler_(Slot, {a0, a1, a2, a3, a4, a5, a6, a7, a8, a9, a10});
  }

  template <std::size_t... Slots>
  static std::array<void*, kSlots> functions(std::index_sequence<Slots...>) {
    return {reinterpret_cast<void*>(&called<Slots>)...};
  }

  static const Vtable& vtable() {
    static const Vtable kVtable;
    return kVtable;
  }

  const void* vtable_ = vtable().slots.data();
  Handler handler_;
};

/// Calls a slot of an object as a caller who knows only the layout does.
inline std::uint64_t callSlot(IUnknown* object, std::size_t slot, const RawArguments& a) {
  using Function = std::uint64_t (*)(IUnknown*, std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                                     std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t,
                                     std::uint64_t, std::uint64_t, std::uint64_t);
  const auto function = reinterpret_cast<Function>((*reinterpret_cast<void***>(object))[slot]);
  return function(object, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10]);
}

}  // namespace emulator::testing
