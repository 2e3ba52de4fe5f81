// Writes values of the platform's types into a line of the call log.
#pragma once

#include <algorithm>
#include <span>

#include "emulator/calls/json_line.h"
#include "emulator/calls/object_names.h"
#include "emulator/calls/structures.h"
#include "platform/com.h"
#include "platform/registry.h"

namespace emulator {

class ValueEncoder {
 public:
  ValueEncoder(JsonLine& line, ObjectNames& names) : line_(line), names_(names) {}

  /// A value, or what a pointer that is part of a structure points to.
  template <typename T>
  void value(const T& value);

  void value(const DATE& date) { line_.number(static_cast<double>(date)); }
  void value(const LARGE_INTEGER& integer) { line_.number(static_cast<std::int64_t>(integer)); }
  void value(const ULARGE_INTEGER& integer) { line_.number(static_cast<std::uint64_t>(integer)); }
  void value(const CEBLOB& blob) { bytes(blob.lpb, blob.dwCount); }
  void value(const SBinary& binary) { bytes(binary.lpb, binary.cb); }
  void value(const SYSTEMTIME& time);
  void value(const FILETIME& time);
  void value(const GUID& identifier);
  void value(const CEPROPVAL& property) { structure(property); }

  /// {"bytes": COUNT}; null for a null pointer.
  void bytes(const void* data, std::int64_t count);
  /// A text, or null; a negative count means that it ends with its NUL.
  void text(const WCHAR* text, std::int64_t count = -1);
  void text(const char* text);
  /// "@KIND#N", or null.
  template <typename T>
  void opaque(T* pointer);
  /// "@INTERFACE#N", or null.
  template <typename T>
  void object(const T* object);
  template <typename T>
  void array(const T* elements, std::int64_t count);
  /// A record count, an identifier, or the CEPROPVAL that is sought, as the type of the seek says.
  void seekValue(DWORD type, DWORD_PTR value);
  /// The EDITSTREAM of a message that streams; a number with any other message.
  void messageArgument(UINT message, LPARAM argument);

  JsonLine& line() { return line_; }

 private:
  template <typename T>
  void structure(const T& structure);
  template <typename Field, typename T>
  void field(const T& structure);

  void chosen(const CEPROPVAL& property);
  void chosen(const SPropValue& property);
  void chosen(const MAPINAMEID& name);
  void key(const void* key);

  JsonLine& line_;
  ObjectNames& names_;
};

/// "HWND" of HWND__; how an opaque pointer's kind is called in the log.
template <typename T>
constexpr std::string_view kindOf() {
  if constexpr (std::is_function_v<T>) {
    return "procedure";
  } else if constexpr (std::is_void_v<T>) {
    return "pointer";
  } else {
    return kTypeName<T>.substr(0, kTypeName<T>.find("__"));
  }
}

template <typename T>
void ValueEncoder::value(const T& value) {
  if constexpr (std::is_enum_v<T>) {
    this->value(static_cast<std::underlying_type_t<T>>(value));
  } else if constexpr (std::is_integral_v<T>) {
    line_.number(static_cast<std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>>(value));
  } else if constexpr (std::is_same_v<T, double>) {
    line_.number(value);
  } else if constexpr (std::is_same_v<T, WCHAR*> || std::is_same_v<T, const WCHAR*>) {
    text(value);
  } else if constexpr (std::is_array_v<T>) {
    static_assert(std::is_same_v<std::remove_extent_t<T>, WCHAR>, "any other array is counted by a field");
    // A text that fills its field has no NUL.
    text(value, std::find(std::begin(value), std::end(value), u'\0') - std::begin(value));
  } else if constexpr (std::is_pointer_v<T>) {
    using Pointee = std::remove_const_t<std::remove_pointer_t<T>>;
    if constexpr (std::is_same_v<Pointee, GUID> || DescribedStructure<Pointee>) {
      value == nullptr ? line_.null() : this->value(*value);
    } else {
      opaque(value);
    }
  } else {
    structure(value);
  }
}

template <typename T>
void ValueEncoder::opaque(T* pointer) {
  const auto* const address = reinterpret_cast<const void*>(pointer);
  if (pointer == nullptr) {
    line_.null();
  } else if constexpr (std::is_same_v<T*, HKEY>) {
    key(address);
  } else if (address == reinterpret_cast<const void*>(INVALID_HANDLE_VALUE)) {
    line_.text(std::string_view("@INVALID_HANDLE_VALUE"));
  } else {
    line_.text(names_.name(kindOf<std::remove_cv_t<T>>(), address));
  }
}

template <typename T>
void ValueEncoder::object(const T* object) {
  object == nullptr ? line_.null() : line_.text(names_.objectName(kTypeName<T>, object));
}

template <typename T>
void ValueEncoder::array(const T* elements, std::int64_t count) {
  if (elements == nullptr) return line_.null();
  line_.beginArray();
  for (const T& element : std::span(elements, static_cast<std::size_t>(count))) value(element);
  line_.endArray();
}

namespace value_encoder_detail {

/// How many elements there are. An array that is declared with one goes on past it; any other ends where it
/// ends, whatever the count says.
template <typename T>
std::int64_t elementsOf(const T&, std::int64_t count) {
  constexpr auto kDeclared = static_cast<std::int64_t>(std::extent_v<T>);
  return kDeclared > 1 ? std::min(count, kDeclared) : count;
}

template <typename... Fields, typename Visitor>
void forEachField(FieldList<Fields...>, Visitor visit) {
  (visit.template operator()<Fields>(), ...);
}

}  // namespace value_encoder_detail

template <typename T>
void ValueEncoder::structure(const T& structure) {
  line_.beginObject();
  value_encoder_detail::forEachField(typename Structure<T>::Fields{},
                                     [&]<typename Field>() { field<Field>(structure); });
  line_.endObject();
}

template <typename Field, typename T>
void ValueEncoder::field(const T& structure) {
  if constexpr (Field::kMeaning != Meaning::Reserved) {
    line_.key(Field::kName);
    if constexpr (Field::kMeaning == Meaning::Chosen) {
      chosen(structure);
    } else if constexpr (!std::is_null_pointer_v<std::remove_const_t<decltype(Field::kCount)>>) {
      const auto& member = structure.*Field::kMember;
      const auto* elements = member;
      array(elements, value_encoder_detail::elementsOf(member, structure.*Field::kCount));
    } else {
      value(structure.*Field::kMember);
    }
  }
}

}  // namespace emulator
