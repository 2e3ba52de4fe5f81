// Formats trace messages: printf with arguments that know their own types.
#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

#include "platform/types.h"

namespace qorv {

/// A whole number, a text or an address. Texts are borrowed; a null one prints as "(null)".
class TraceArgument {
 public:
  template <std::integral Integer>
  TraceArgument(Integer value) : value_(numberOf(+value)) {}
  TraceArgument(LPCWSTR text) : value_(text) {}
  TraceArgument(const char* text) : value_(text) {}
  TraceArgument(const void* address) : value_(address) {}

 private:
  friend class TraceFormatter;

  /// As %d and as %u show it; the width is that of the argument.
  struct Number {
    std::int64_t asSigned;
    std::uint64_t asUnsigned;
  };

  template <typename Promoted>
  static Number numberOf(Promoted value) {
    return {static_cast<std::int64_t>(static_cast<std::make_signed_t<Promoted>>(value)),
            static_cast<std::uint64_t>(static_cast<std::make_unsigned_t<Promoted>>(value))};
  }

  std::variant<Number, LPCWSTR, const char*, const void*> value_;
};

/// Writes the message and a NUL; what has no room is cut off. The characters without the NUL.
///
/// Conversions d i u o x X c C s S p %, with flags, width and precision, * included. Length modifiers may
/// stand there and mean nothing: an argument has its own width, and a text its own kind of characters.
/// Whatever else follows a %, and a conversion without an argument, is printed as it stands. There are no
/// floating-point conversions: they would swell the device library, and nothing here is measured in
/// fractions.
std::size_t formatTrace(std::span<WCHAR> message, std::u16string_view format,
                        std::span<const TraceArgument> arguments);

}  // namespace qorv
