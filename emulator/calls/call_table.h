// Rows that describe platform calls: what the declaration can't say stands in the row, the rest comes from
// it.
#pragma once

#include <array>
#include <cstdint>
#include <tuple>

#include "emulator/calls/call_name.h"
#include "emulator/calls/parameter.h"

namespace emulator {

/// How a call tells that it failed.
struct Failure {
  enum class Kind : std::uint8_t {
    Hresult,    ///< it returns the code, an HRESULT
    ErrorCode,  ///< it returns the code, an error number
    Value,      ///< it returns `value` and leaves the code as last error
    Argument,   ///< as Value, with the argument at place `value`
  };
  Kind kind = Kind::Value;
  std::int64_t value = 0;

  friend constexpr bool operator==(const Failure&, const Failure&) = default;
};

inline constexpr Failure kReturnsHresult{Failure::Kind::Hresult};
inline constexpr Failure kReturnsErrorCode{Failure::Kind::ErrorCode};
inline constexpr Failure kReturnsAllOnes{Failure::Kind::Value, -1};
constexpr Failure returnsOnFailure(std::int64_t value) {
  return {Failure::Kind::Value, value};
}
constexpr Failure returnsArgumentOnFailure(std::int64_t place) {
  return {Failure::Kind::Argument, place};
}

/// A call's argument stops naming an object when the call succeeds.
struct Closes {
  std::size_t place;
};
constexpr Closes closes(std::size_t place) {
  return {place};
}

namespace call_table_detail {

template <typename Callee>
struct Signature;
template <typename R, typename... A>
struct Signature<R (*)(A...)> {
  using Result = R;
  using Arguments = std::tuple<A...>;
  static constexpr Failure kFailure{};
};
template <typename R, typename Class, typename... A>
struct Signature<R (Class::*)(A...)> {
  using Result = R;
  using Arguments = std::tuple<A...>;
  static constexpr Failure kFailure = std::is_same_v<R, HRESULT> ? kReturnsHresult : Failure{};
};

// Each kind of note looks only for its own kind among a row's notes.
constexpr void note(Parameter& parameter, const Parameter& candidate) {
  if (candidate.place == parameter.place) parameter = candidate;
}
constexpr void note(Failure& failure, const Failure& candidate) {
  failure = candidate;
}
constexpr void note(Closes& closed, const Closes& candidate) {
  closed = candidate;
}
template <typename Wanted, typename Other>
constexpr void note(Wanted&, const Other&) {}

}  // namespace call_table_detail

/// One call: a platform function, or a member of an interface, and notes: Parameter, Failure, Closes.
/// Without a note a function fails with 0, a member that returns an HRESULT with that.
template <auto Callee, auto... Notes>
struct Call {
  using Result = typename call_table_detail::Signature<decltype(Callee)>::Result;
  using Arguments = typename call_table_detail::Signature<decltype(Callee)>::Arguments;

  static constexpr auto kCallee = Callee;
  static constexpr std::string_view kName = kNameOf<Callee>;
  static constexpr std::size_t kArity = std::tuple_size_v<Arguments>;

  template <std::size_t Place>
  static constexpr Parameter parameter() {
    Parameter found = defaultParameter<std::tuple_element_t<Place, Arguments>>(Place);
    (call_table_detail::note(found, Notes), ...);
    return found;
  }

  static constexpr Failure failure() {
    Failure found = call_table_detail::Signature<decltype(Callee)>::kFailure;
    (call_table_detail::note(found, Notes), ...);
    return found;
  }

  /// The arity when it closes nothing.
  static constexpr std::size_t closedPlace() {
    Closes found{kArity};
    (call_table_detail::note(found, Notes), ...);
    return found.place;
  }
};

/// What calls that are observed alike have in common. Hundreds of calls have far fewer forms.
template <typename R, typename ArgumentTuple, Failure HowItFails, std::size_t ClosedPlace,
          Parameter... Parameters>
struct CallForm {
  using Result = R;
  using Arguments = ArgumentTuple;

  static constexpr std::size_t kArity = sizeof...(Parameters);
  static constexpr std::size_t kClosedPlace = ClosedPlace;
  static constexpr Failure kFailure = HowItFails;

  template <std::size_t Place>
  static constexpr Parameter kParameter = std::array<Parameter, kArity>{Parameters...}[Place];
};

namespace call_table_detail {

template <typename Row, std::size_t... Places>
auto formOf(std::index_sequence<Places...>)
    -> CallForm<typename Row::Result, typename Row::Arguments, Row::failure(), Row::closedPlace(),
                Row::template parameter<Places>()...>;

}  // namespace call_table_detail

template <typename Row>
using FormOf = decltype(call_table_detail::formOf<Row>(std::make_index_sequence<Row::kArity>{}));

template <typename... Calls>
struct CallList : Calls... {
  static constexpr std::size_t kSize = sizeof...(Calls);
};

namespace call_table_detail {

template <typename... Lists>
struct Concatenation;
template <typename... Calls>
struct Concatenation<CallList<Calls...>> {
  using Type = CallList<Calls...>;
};
template <typename... First, typename... Second, typename... Rest>
struct Concatenation<CallList<First...>, CallList<Second...>, Rest...>
    : Concatenation<CallList<First..., Second...>, Rest...> {};

template <auto Callee, auto... Notes>
Call<Callee, Notes...> pick(const Call<Callee, Notes...>&);

}  // namespace call_table_detail

template <typename... Lists>
using Concatenated = typename call_table_detail::Concatenation<Lists...>::Type;

/// The row of a callee in a list; the program doesn't compile when there is none.
template <auto Callee, typename List>
using RowOf = decltype(call_table_detail::pick<Callee>(std::declval<List>()));

}  // namespace emulator
