// The vtables of taps, one for every interface, built from its member list.
#include <array>
#include <typeinfo>

#include "emulator/calls/interface_info.h"
#include "emulator/calls/interfaces.h"
#include "emulator/calls/observe.h"
#include "emulator/calls/taps.h"

namespace emulator {

namespace {

template <typename Member>
struct ClassOf;
template <typename R, typename Class, typename... A>
struct ClassOf<R (Class::*)(A...)> {
  using Type = Class;
};

/// What stands in a slot. A member function takes its object as a first argument of a plain function.
template <typename Row, typename Arguments = typename Row::Arguments>
struct Slot;

template <typename Row, typename... A>
struct Slot<Row, std::tuple<A...>> {
  static typename Row::Result call(Tap* tap, A... arguments) {
    using Class = typename ClassOf<std::remove_const_t<decltype(Row::kCallee)>>::Type;
    CallMonitor& monitor = *tap->monitor;
    const std::string name = std::string(tap->interface->name) + "." + std::string(Row::kName);
    return observe<Row>(monitor, name, std::tuple<A...>(arguments...), [&, tap](A... exchanged) {
      const auto object = static_cast<Class*>(tap->target);
      if constexpr (std::is_same_v<Row, Call<&IUnknown::Release>>) {
        const void* const whole = tap->object;
        const ULONG left = object->Release();
        if (left == 0) monitor.taps().end(whole);
        return left;
      } else {
        return (object->*Row::kCallee)(exchanged...);
      }
    });
  }
};

/// The layout that the compiler expects of a class with one base and no virtual destructor: behind what
/// identifies the class come the functions, and objects point there.
template <typename T, typename Members = AllMembers<T>>
struct TapVtable;

template <typename T, typename... Rows>
struct TapVtable<T, CallList<Rows...>> {
  std::ptrdiff_t offsetToTop = 0;
  const std::type_info* type = &typeid(T);
  std::array<void*, sizeof...(Rows)> slots{reinterpret_cast<void*>(&Slot<Rows>::call)...};
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
  static const InterfaceInfo kInfo{kTypeName<T>, T::kIid, baseInfo<typename Interface<T>::Base>(),
                                   kVtable.slots.data(), &interfaceOfObject<T>};
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
