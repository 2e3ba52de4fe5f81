// Names of calls, fields and types as the platform's declarations spell them, found at compile time.
#pragma once

#include <string_view>

namespace emulator {

namespace call_name_detail {

// The compiler spells template arguments in the name of the function; no list repeats what a declaration
// says.
template <auto Entity>
constexpr std::string_view spelled() {
  return __PRETTY_FUNCTION__;
}
template <typename Type>
constexpr std::string_view spelledType() {
  return __PRETTY_FUNCTION__;
}

constexpr std::string_view argumentOf(std::string_view spelling) {
  const auto begin = spelling.find("= ") + 2;
  return spelling.substr(begin, spelling.find_first_of(";]", begin) - begin);
}

constexpr std::string_view withoutScope(std::string_view name) {
  return name.substr(name.find_last_of("&:") + 1);
}

}  // namespace call_name_detail

/// "put_Start" of &IAppointment::put_Start, "CreateFileW" of &::CreateFileW, "wYear" of &SYSTEMTIME::wYear.
template <auto Entity>
inline constexpr std::string_view kNameOf =
    call_name_detail::withoutScope(call_name_detail::argumentOf(call_name_detail::spelled<Entity>()));

/// "IAppointment" of IAppointment.
template <typename Type>
inline constexpr std::string_view kTypeName =
    call_name_detail::withoutScope(call_name_detail::argumentOf(call_name_detail::spelledType<Type>()));

static_assert(kTypeName<std::string_view::traits_type> == "char_traits<char>");

}  // namespace emulator
