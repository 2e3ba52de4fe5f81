// How values that hold pointers lie in the device's memory, derived from the structures' field lists.
#pragma once

#include <algorithm>

#include "emulator/arm/border.h"
#include "emulator/calls/parameter.h"
#include "emulator/calls/structures.h"

namespace emulator::arm {

namespace layout_detail {

template <auto Member>
struct MemberOf;
template <typename Class, typename T, T Class::*Member>
struct MemberOf<Member> {
  using Type = T;
};
template <typename F>
using FieldType = typename MemberOf<F::kMember>::Type;

template <typename T>
constexpr bool holdsPointers();

template <typename... F>
constexpr bool anyHoldsPointers(FieldList<F...>) {
  return ((F::kMeaning == Meaning::Chosen || holdsPointers<FieldType<F>>()) || ...);
}

/// Words of pointer width count as pointers: they are narrower on the device. Nothing is known of what is
/// not declared, and nobody looks into it.
template <typename T>
constexpr bool holdsPointers() {
  if constexpr (!parameter_detail::Complete<T>) {
    return false;
  } else if constexpr (std::is_array_v<T>) {
    return holdsPointers<std::remove_extent_t<T>>();
  } else if constexpr (DescribedStructure<T>) {
    return anyHoldsPointers(typename Structure<T>::Fields{});
  } else {
    return std::is_pointer_v<T> || (std::is_integral_v<T> && sizeof(T) > sizeof(std::uint32_t));
  }
}

}  // namespace layout_detail

/// Whether the device and the host lay it out alike, so that both can use the same bytes.
template <typename T>
inline constexpr bool kSameLayout = !layout_detail::holdsPointers<std::remove_cv_t<T>>();

namespace layout_detail {

struct Extent {
  std::uint32_t size = 0;
  std::uint32_t alignment = 1;
};

template <typename T>
constexpr Extent extentOf();

constexpr std::uint32_t aligned(std::uint32_t offset, std::uint32_t alignment) {
  return (offset + alignment - 1) / alignment * alignment;
}

template <typename F>
constexpr Extent fieldExtent() {
  if constexpr (F::kMeaning == Meaning::Chosen) {
    // A number or a pointer, or a pair of them.
    return {sizeof(FieldType<F>) <= sizeof(void*) ? 4u : 8u, 4};
  } else {
    return extentOf<FieldType<F>>();
  }
}

template <typename... F>
constexpr Extent fieldsExtent(FieldList<F...>) {
  Extent whole;
  const auto add = [&](Extent field) {
    whole.size = aligned(whole.size, field.alignment) + field.size;
    whole.alignment = std::max(whole.alignment, field.alignment);
  };
  (add(fieldExtent<F>()), ...);
  whole.size = aligned(whole.size, whole.alignment);
  return whole;
}

template <typename T>
constexpr Extent extentOf() {
  if constexpr (kSameLayout<T>) {
    return {sizeof(T), alignof(T)};
  } else if constexpr (std::is_array_v<T>) {
    const Extent element = extentOf<std::remove_extent_t<T>>();
    return {static_cast<std::uint32_t>(element.size * std::extent_v<T>), element.alignment};
  } else if constexpr (DescribedStructure<T>) {
    return fieldsExtent(typename Structure<T>::Fields{});
  } else {
    return {4, 4};
  }
}

}  // namespace layout_detail

/// Bytes of a value on the device.
template <typename T>
inline constexpr std::uint32_t kGuestSize = layout_detail::extentOf<T>().size;

static_assert(kGuestSize<CEPROPVAL> == 16 && kGuestSize<SPropValue> == 16 && kGuestSize<WNDCLASSW> == 40);
static_assert(kGuestSize<STATSTG> == 72 && kGuestSize<WSADATA> == 400 && kGuestSize<CENOTIFYREQUEST> == 20);
static_assert(kGuestSize<SRow> == 12 && kGuestSize<ADRENTRY> == 12 && kGuestSize<MAPINAMEID> == 12);
static_assert(kGuestSize<EDITSTREAM> == 12 && kGuestSize<PROCESS_INFORMATION> == 16);

/// The host's copies of `count` values at an address; null for address 0.
template <typename T>
T* loadArray(Crossing& crossing, GuestAddress address, std::size_t count);

/// Writes a value where the library has it.
template <typename T>
void store(Crossing& crossing, GuestAddress address, const T& value);

namespace layout_detail {

template <typename Field, typename T>
std::size_t countOf(const T& structure) {
  if constexpr (std::is_null_pointer_v<std::remove_cv_t<decltype(Field::kCount)>>) {
    return 1;
  } else {
    return static_cast<std::size_t>(structure.*Field::kCount);
  }
}

template <typename T, typename Visitor>
void forEachField(Visitor visit) {
  std::uint32_t offset = 0;
  [&]<typename... F>(FieldList<F...>) {
    const auto next = [&]<typename One>() {
      offset = aligned(offset, fieldExtent<One>().alignment);
      visit.template operator()<One>(offset);
      offset += fieldExtent<One>().size;
    };
    (next.template operator()<F>(), ...);
  }(typename Structure<T>::Fields{});
}

/// A pointer in a structure, to `count` values.
template <typename Pointer>
Pointer loadPointer(Crossing& crossing, std::uint32_t word, std::size_t count) {
  using T = std::remove_cv_t<std::remove_pointer_t<Pointer>>;
  if constexpr (std::is_same_v<Pointer, WNDPROC>) {
    return crossing.callbacks().windowProcedure(word);
  } else if constexpr (std::is_function_v<T> || !parameter_detail::Complete<T>) {
    return reinterpret_cast<Pointer>(crossing.opaque(word));
  } else if constexpr (std::is_same_v<T, WCHAR> || std::is_same_v<T, char>) {
    return crossing.text<T>(word);
  } else {
    return loadArray<T>(crossing, word, count);
  }
}

void loadChosen(Crossing& crossing, GuestAddress address, CEPROPVAL& property);
void loadChosen(Crossing& crossing, GuestAddress address, SPropValue& property);
void loadChosen(Crossing& crossing, GuestAddress address, MAPINAMEID& name);
void storeChosen(Crossing& crossing, GuestAddress address, const CEPROPVAL& property);
void storeChosen(Crossing& crossing, GuestAddress address, const SPropValue& property);
void storeChosen(Crossing& crossing, GuestAddress address, const MAPINAMEID& name);

template <typename Field, typename T>
void loadField(Crossing& crossing, GuestAddress address, T& structure) {
  using Type = FieldType<Field>;
  auto& member = structure.*Field::kMember;
  if constexpr (Field::kMeaning == Meaning::Chosen) {
    loadChosen(crossing, address, structure);
  } else if constexpr (std::is_pointer_v<Type>) {
    const auto word = crossing.memory().read<std::uint32_t>(address);
    member = loadPointer<Type>(crossing, word, countOf<Field>(structure));
  } else if constexpr (kSameLayout<Type>) {
    std::memcpy(&member, crossing.memory().at(address, sizeof member), sizeof member);
  } else if constexpr (std::is_array_v<Type>) {
    // It goes on behind the structure, for which loadFlexible made room.
    using Element = std::remove_extent_t<Type>;
    const std::size_t count = countOf<Field>(structure);
    const Element* const elements = loadArray<Element>(crossing, address, count);
    std::copy_n(elements, count, static_cast<Element*>(member));
  } else {
    member = static_cast<Type>(crossing.memory().read<std::uint32_t>(address));
  }
}

template <typename Field, typename T>
void storeField(Crossing& crossing, GuestAddress address, const T& structure) {
  using Type = FieldType<Field>;
  const auto& member = structure.*Field::kMember;
  if constexpr (Field::kMeaning == Meaning::Chosen) {
    storeChosen(crossing, address, structure);
  } else if constexpr (std::is_pointer_v<Type>) {
    crossing.memory().write(address, crossing.word(reinterpret_cast<const void*>(member)));
  } else if constexpr (kSameLayout<Type>) {
    std::memcpy(crossing.memory().writableAt(address, sizeof member), &member, sizeof member);
  } else if constexpr (std::is_array_v<Type>) {
    using Element = std::remove_extent_t<Type>;
    const Element* const elements = member;
    for (std::size_t i = 0; i < countOf<Field>(structure); ++i) {
      store(crossing, address + static_cast<GuestAddress>(i) * kGuestSize<Element>, elements[i]);
    }
  } else {
    crossing.memory().write(address, static_cast<std::uint32_t>(member));
  }
}

/// Whether the last field goes on past its declared end.
template <typename T>
inline constexpr bool kFlexible = std::is_same_v<T, ADRLIST> || std::is_same_v<T, SRowSet>;

/// How many elements a structure that goes on says it has; the count is its first word.
template <typename T>
T* loadFlexible(Crossing& crossing, GuestAddress address) {
  const auto count = crossing.memory().read<std::uint32_t>(address);
  // Before room is made for what a wild count claims.
  crossing.memory().at(address, 4 + std::size_t{count} * kGuestSize<ADRENTRY>);
  void* const room =
      crossing.room<std::max_align_t>((sizeof(T) + count * sizeof(ADRENTRY)) / sizeof(std::max_align_t) + 1);
  auto* const structure = ::new (room) T{};
  forEachField<T>([&]<typename Field>(std::uint32_t offset) {
    loadField<Field>(crossing, address + offset, *structure);
  });
  return structure;
}

template <typename T>
T load(Crossing& crossing, GuestAddress address) {
  if constexpr (DescribedStructure<T>) {
    crossing.memory().at(address, kGuestSize<T>, 4);
    T structure{};
    forEachField<T>([&]<typename Field>(std::uint32_t offset) {
      loadField<Field>(crossing, address + offset, structure);
    });
    return structure;
  } else if constexpr (std::is_pointer_v<T>) {
    return loadPointer<T>(crossing, crossing.memory().read<std::uint32_t>(address), 1);
  } else {
    return static_cast<T>(crossing.memory().read<std::uint32_t>(address));
  }
}

}  // namespace layout_detail

template <typename T>
T* loadArray(Crossing& crossing, GuestAddress address, std::size_t count) {
  if (address == 0) return nullptr;
  if constexpr (kSameLayout<T>) {
    return crossing.direct<T>(address, count);
  } else if constexpr (layout_detail::kFlexible<T>) {
    return layout_detail::loadFlexible<T>(crossing, address);
  } else {
    crossing.memory().at(address, count * kGuestSize<T>, 4);
    T* const copies = crossing.room<T>(count);
    for (std::size_t i = 0; i < count; ++i) {
      ::new (copies + i)
          T(layout_detail::load<T>(crossing, address + static_cast<GuestAddress>(i) * kGuestSize<T>));
    }
    return copies;
  }
}

template <typename T>
void store(Crossing& crossing, GuestAddress address, const T& value) {
  if constexpr (kSameLayout<T>) {
    std::memcpy(crossing.memory().writableAt(address, sizeof value), &value, sizeof value);
  } else if constexpr (DescribedStructure<T>) {
    layout_detail::forEachField<T>([&]<typename Field>(std::uint32_t offset) {
      layout_detail::storeField<Field>(crossing, address + offset, value);
    });
  } else if constexpr (std::is_pointer_v<T>) {
    crossing.memory().write(address, crossing.word(reinterpret_cast<const void*>(value)));
  } else {
    crossing.memory().write(address, static_cast<std::uint32_t>(value));
  }
}

/// Lays values that the platform made in the library's memory out as the library reads them, in their place:
/// they are never larger there.
template <typename T>
void relay(Crossing& crossing, T* values, std::size_t count) {
  static_assert(kGuestSize<T> <= sizeof(T));
  const GuestAddress address = crossing.word(values);
  for (std::size_t i = 0; i < count; ++i) {
    const T value = values[i];
    store(crossing, address + static_cast<GuestAddress>(i) * kGuestSize<T>, value);
  }
}

/// The same for the rows of a table, each with its values.
void relayRows(Crossing& crossing, SRowSet* rows);

}  // namespace emulator::arm
