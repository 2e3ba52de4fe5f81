// The vtables of taps, one for every interface, built from its member list.
#include <array>
#include <typeinfo>

#include "emulator/calls/interface_info.h"
#include "emulator/calls/interfaces.h"
#include "emulator/calls/observe.h"
#include "emulator/calls/taps.h"

namespace emulator {

namespace {

constexpr std::size_t kReleaseSlot = 2;

/// A call that is on its way to a tap's object.
struct TappedCall {
  const Tap& tap;
  std::size_t slot;
};

/// Calls a slot of the object behind a tap, as the tap itself was called. A member function takes its object
/// as a first argument of a plain function.
template <typename Form, typename... A>
typename Form::Result callTarget(const void* context, const std::tuple<A...>& arguments) {
  using Function = typename Form::Result (*)(IUnknown*, A...);
  const auto& call = *static_cast<const TappedCall*>(context);
  IUnknown* const target = call.tap.target;
  const auto function = reinterpret_cast<Function>((*reinterpret_cast<void***>(target))[call.slot]);
  const auto result = std::apply([&](A... argument) { return function(target, argument...); }, arguments);
  if (call.slot == kReleaseSlot && result == 0) call.tap.monitor->taps().end(call.tap.object);
  return result;
}

template <typename Form, typename... A>
[[gnu::noinline]] typename Form::Result observeMember(const Tap& tap, std::size_t slot,
                                                      const std::tuple<A...>& arguments) {
  const TappedCall call{tap, slot};
  const std::string name = std::string(tap.interface->name) + "." + std::string(tap.interface->members[slot]);
  return observe<Form>(*tap.monitor, name, arguments, {&callTarget<Form, A...>, &call});
}

/// What stands in a slot.
template <typename Form, std::size_t Place, typename Arguments = typename Form::Arguments>
struct Slot;

template <typename Form, std::size_t Place, typename... A>
struct Slot<Form, Place, std::tuple<A...>> {
  static typename Form::Result call(Tap* tap, A... arguments) {
    return observeMember<Form>(*tap, Place, std::tuple<A...>(arguments...));
  }
};

template <typename... Rows, std::size_t... Places>
std::array<void*, sizeof...(Rows)> slotFunctions(CallList<Rows...>, std::index_sequence<Places...>) {
  return {reinterpret_cast<void*>(&Slot<FormOf<Rows>, Places>::call)...};
}

template <typename... Rows>
constexpr std::array<std::string_view, sizeof...(Rows)> memberNames(CallList<Rows...>) {
  return {Rows::kName...};
}

/// The layout that the compiler expects of a class with one base and no virtual destructor: behind what
/// identifies the class come the functions, and objects point there.
template <typename T>
struct TapVtable {
  std::ptrdiff_t offsetToTop = 0;
  const std::type_info* type = &typeid(T);
  std::array<void*, AllMembers<T>::kSize> slots =
      slotFunctions(AllMembers<T>{}, std::make_index_sequence<AllMembers<T>::kSize>{});
};

template <typename T>
IUnknown* interfaceOfObject(IUnknown* object) {
  return dynamic_cast<T*>(object);
}

template <typename T>
const InterfaceInfo* baseInfo() {
  if constexpr (std::is_void_v<T>) {
    return nullptr;
  } else {
    return &interfaceInfo<T>();
  }
}

}  // namespace

template <typename T>
const InterfaceInfo& interfaceInfo() {
  static const TapVtable<T> kVtable;
  static constexpr auto kMembers = memberNames(AllMembers<T>{});
  static const InterfaceInfo kInfo{
      kTypeName<T>,         T::kIid, kMembers, baseInfo<typename Interface<T>::Base>(), kVtable.slots.data(),
      &interfaceOfObject<T>};
  return kInfo;
}

template const InterfaceInfo& interfaceInfo<IUnknown>();
template const InterfaceInfo& interfaceInfo<IDispatch>();
template const InterfaceInfo& interfaceInfo<ISequentialStream>();
template const InterfaceInfo& interfaceInfo<IStream>();
template const InterfaceInfo& interfaceInfo<IRAPIStream>();
template const InterfaceInfo& interfaceInfo<IContact>();
template const InterfaceInfo& interfaceInfo<IAppointment>();
template const InterfaceInfo& interfaceInfo<ITask>();
template const InterfaceInfo& interfaceInfo<IRecurrencePattern>();
template const InterfaceInfo& interfaceInfo<IException>();
template const InterfaceInfo& interfaceInfo<IExceptions>();
template const InterfaceInfo& interfaceInfo<IPOutlookApp>();
template const InterfaceInfo& interfaceInfo<IFolder>();
template const InterfaceInfo& interfaceInfo<IPOutlookItemCollection>();
template const InterfaceInfo& interfaceInfo<IItem>();
template const InterfaceInfo& interfaceInfo<IMAPIProp>();
template const InterfaceInfo& interfaceInfo<IMsgStore>();
template const InterfaceInfo& interfaceInfo<IMAPIContainer>();
template const InterfaceInfo& interfaceInfo<IMAPIFolder>();
template const InterfaceInfo& interfaceInfo<IMessage>();
template const InterfaceInfo& interfaceInfo<IAttach>();
template const InterfaceInfo& interfaceInfo<IMAPITable>();
template const InterfaceInfo& interfaceInfo<IMAPISession>();

}  // namespace emulator
