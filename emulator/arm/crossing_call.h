// Carries one call across the border: arguments from the processor's words to the platform's types and back, driven by the
// call's form in the table of calls.
#pragma once

#include <array>
#include <functional>

#include "emulator/arm/layout.h"
#include "emulator/calls/interfaces.h"
#include "emulator/calls/observe.h"

namespace emulator::arm {

/// The n-th argument word of the call that trapped.
using ArgumentWords = std::function<std::uint32_t(std::size_t index)>;

namespace crossing_detail {

template <typename T>
inline constexpr bool kTwoWords =
    std::is_same_v<T, DATE> || std::is_same_v<T, LARGE_INTEGER> || std::is_same_v<T, ULARGE_INTEGER>;

template <typename Form, std::size_t Place>
using ArgumentType = std::tuple_element_t<Place, typename Form::Arguments>;

template <typename T>
inline constexpr bool kCharacter =
    std::is_same_v<std::remove_cv_t<T>, WCHAR> || std::is_same_v<std::remove_cv_t<T>, char>;

/// A count of characters that leaves it to the text to say where it ends: -1.
inline constexpr std::size_t kToItsNul = ~std::size_t{0};

/// How many words the arguments before a place take. The platform passes a 64-bit argument in the next two.
template <typename Form, std::size_t Place>
constexpr std::size_t wordsBefore() {
  return []<std::size_t... Earlier>(std::index_sequence<Earlier...>) {
    return ((kTwoWords<ArgumentType<Form, Earlier>> ? std::size_t{2} : std::size_t{1}) + ... +
            std::size_t{0});
  }
  (std::make_index_sequence<Place>{});
}

/// What an out-argument holds before the call, to tell afterwards whether the platform gave it a value.
inline void* untouched() {
  static char mark;
  return &mark;
}

template <typename Form>
class Arguments {
 public:
  Arguments(Crossing& crossing, const ArgumentWords& words, std::size_t firstWord)
      : crossing_(crossing), words_(words), firstWord_(firstWord) {}

  typename Form::Arguments toPlatform() {
    return [&]<std::size_t... Places>(std::index_sequence<Places...>) {
      return typename Form::Arguments(argument<Places>()...);
    }
    (std::make_index_sequence<Form::kArity>{});
  }

  /// Hands what the platform left in the host's copies back to the library. Only a call that succeeded has
  /// filled a block: after a failed one the library still has its own there, in its own layout.
  void fromPlatform(const typename Form::Arguments& values, bool succeeded) {
    hasBlocks_ = succeeded;
    [&]<std::size_t... Places>(std::index_sequence<Places...>) {
      (giveBack<Places>(values), ...);
    }
    (std::make_index_sequence<Form::kArity>{});
  }

 private:
  template <std::size_t Place>
  static constexpr Parameter kParameter = Form::template kParameter<Place>;

  template <std::size_t Place>
  std::uint32_t word() const {
    return words_(firstWord_ + wordsBefore<Form, Place>());
  }

  /// The number that an argument is, or that stands where it points to.
  template <std::size_t Place>
  std::size_t number() const {
    using T = ArgumentType<Form, Place>;
    if constexpr (std::is_pointer_v<T>) {
      using Number = std::remove_cv_t<std::remove_pointer_t<T>>;
      const std::uint32_t address = word<Place>();
      return address == 0 ? 0 : static_cast<std::size_t>(crossing_.memory().read<Number>(address));
    } else {
      return static_cast<std::size_t>(static_cast<T>(word<Place>()));
    }
  }

  template <std::size_t Place>
  ArgumentType<Form, Place> argument() {
    using T = ArgumentType<Form, Place>;
    if constexpr (kTwoWords<T>) {
      const std::uint64_t low = word<Place>();
      const std::uint64_t high = words_(firstWord_ + wordsBefore<Form, Place>() + 1);
      return std::bit_cast<T>(low | high << 32);
    } else if constexpr (std::is_reference_v<T>) {
      return *crossing_.direct<std::remove_reference_t<T>>(word<Place>());
    } else if constexpr (std::is_pointer_v<T>) {
      return pointer<Place>();
    } else if constexpr (kParameter<Place>.shape == Shape::SeekValue) {
      return seekValue<Place>();
    } else if constexpr (kParameter<Place>.shape == Shape::Message) {
      return messageArgument<Place>();
    } else if constexpr (sizeof(T) > sizeof(std::uint32_t) && std::is_signed_v<T>) {
      return static_cast<std::int32_t>(word<Place>());
    } else {
      return static_cast<T>(word<Place>());
    }
  }

  template <std::size_t Place>
  ArgumentType<Form, Place> pointer() {
    using T = ArgumentType<Form, Place>;
    using Pointee = std::remove_pointer_t<T>;
    constexpr Parameter kMeant = kParameter<Place>;
    const std::uint32_t address = word<Place>();
    if (kMeant.required && address == 0) throw GuestFault("a value is needed where the library gives none");
    if constexpr (!std::is_void_v<Pointee> && !parameter_detail::Complete<Pointee>) {
      return reinterpret_cast<T>(crossing_.opaque(address));
    } else if constexpr (kMeant.shape == Shape::Text) {
      return crossing_.text<Pointee>(address);
    } else if constexpr (kMeant.shape == Shape::Interface && kMeant.direction == Direction::In) {
      return object<T>(address);
    } else if constexpr (kMeant.shape == Shape::Opaque || kMeant.shape == Shape::Value) {
      return reinterpret_cast<T>(crossing_.opaque(address));
    } else if constexpr (kMeant.shape == Shape::Counted) {
      return counted<Place>(address);
    } else if constexpr (kMeant.shape == Shape::Fixed) {
      return shared<Place>(address, kMeant.number);
    } else if constexpr (kSameLayout<Pointee>) {
      return shared<Place>(address, 1);
    } else {
      return copy<Place>(address);
    }
  }

  template <typename T>
  T object(std::uint32_t address) {
    if (address == 0) return nullptr;
    IUnknown* const found = crossing_.objects().get(address).object;
    if constexpr (std::is_void_v<std::remove_pointer_t<T>>) {
      return found;
    } else {
      return static_cast<T>(found);
    }
  }

  template <std::size_t Place>
  ArgumentType<Form, Place> counted(std::uint32_t address) {
    using Pointee = std::remove_pointer_t<ArgumentType<Form, Place>>;
    const std::size_t count = number<kParameter<Place>.number>();
    if constexpr (std::is_const_v<Pointee> && kCharacter<Pointee>) {
      if (count == kToItsNul) return crossing_.text<Pointee>(address);
    }
    if constexpr (std::is_void_v<Pointee> || kSameLayout<Pointee>) {
      return shared<Place>(address, count);
    } else {
      return loadArray<std::remove_cv_t<Pointee>>(crossing_, address, count);
    }
  }

  /// Bytes that the library and the platform use alike. What the platform fills has to be writable.
  template <std::size_t Place>
  ArgumentType<Form, Place> shared(std::uint32_t address, std::size_t count) {
    using Pointee = std::remove_pointer_t<ArgumentType<Form, Place>>;
    if constexpr (kParameter<Place>.direction == Direction::In) {
      return crossing_.direct<Pointee>(address, count);
    } else {
      return crossing_.writable<Pointee>(address, count);
    }
  }

  /// A copy of what holds pointers, or of a pointer.
  template <std::size_t Place>
  ArgumentType<Form, Place> copy(std::uint32_t address) {
    using Pointee = std::remove_cv_t<std::remove_pointer_t<ArgumentType<Form, Place>>>;
    if (address == 0) return nullptr;
    if constexpr (kParameter<Place>.direction == Direction::Out) {
      auto* const room = crossing_.room<Pointee>(1);
      if constexpr (std::is_pointer_v<Pointee>) {
        *room = reinterpret_cast<Pointee>(untouched());
      } else {
        ::new (room) Pointee{};
      }
      return room;
    } else if constexpr (std::is_pointer_v<Pointee>) {
      auto* const room = crossing_.room<Pointee>(1);
      *room = reinterpret_cast<Pointee>(crossing_.opaque(crossing_.memory().read<std::uint32_t>(address)));
      return room;
    } else {
      return loadArray<Pointee>(crossing_, address, 1);
    }
  }

  template <std::size_t Place>
  DWORD_PTR seekValue() {
    constexpr DWORD kByValue = CEDB_SEEK_VALUESMALLER | CEDB_SEEK_VALUEFIRSTEQUAL | CEDB_SEEK_VALUEGREATER |
                               CEDB_SEEK_VALUENEXTEQUAL;
    if ((number<kParameter<Place>.number>() & kByValue) == 0) return word<Place>();
    return reinterpret_cast<DWORD_PTR>(loadArray<CEPROPVAL>(crossing_, word<Place>(), 1));
  }

  template <std::size_t Place>
  bool streams() const {
    const std::size_t message = number<kParameter<Place>.number>();
    return message == EM_STREAMIN || message == EM_STREAMOUT;
  }

  template <std::size_t Place>
  LPARAM messageArgument() {
    const std::uint32_t address = word<Place>();
    if (!streams<Place>() || address == 0) return static_cast<std::int32_t>(address);
    auto* const stream = crossing_.room<EDITSTREAM>(1);
    const auto cookie = crossing_.memory().read<std::uint32_t>(address);
    const auto callback = crossing_.memory().read<std::uint32_t>(address + 8);
    *stream = crossing_.callbacks().stream(cookie, callback);
    return reinterpret_cast<LPARAM>(stream);
  }

  template <std::size_t Place>
  void giveBack(const typename Form::Arguments& values) {
    using T = ArgumentType<Form, Place>;
    constexpr Parameter kMeant = kParameter<Place>;
    if constexpr (kMeant.shape == Shape::Message) {
      if (streams<Place>() && word<Place>() != 0) giveBackStream<Place>(std::get<Place>(values));
    } else if constexpr (std::is_pointer_v<T> && kMeant.direction != Direction::In &&
                         (kMeant.shape == Shape::Pointee || kMeant.shape == Shape::Block ||
                          kMeant.shape == Shape::Interface)) {
      if constexpr (!kSameLayout<std::remove_pointer_t<T>>) {
        if (std::get<Place>(values) != nullptr) giveBackCopy<Place>(values);
      }
    }
  }

  template <std::size_t Place>
  void giveBackStream(LPARAM argument) {
    const auto& stream = *reinterpret_cast<const EDITSTREAM*>(argument);
    crossing_.memory().write(word<Place>() + 4, stream.dwError);
    crossing_.callbacks().endStream(stream);
  }

  template <std::size_t Place>
  void giveBackCopy(const typename Form::Arguments& values) {
    using Pointee = std::remove_pointer_t<ArgumentType<Form, Place>>;
    const Pointee& value = *std::get<Place>(values);
    if constexpr (std::is_pointer_v<Pointee>) {
      if (reinterpret_cast<const void*>(value) == untouched()) return;
      if constexpr (kParameter<Place>.shape == Shape::Interface) {
        crossing_.memory().write(word<Place>(), objectWord<Place>(value, values));
        return;
      }
      if (hasBlocks_ && value != nullptr) relayBlock<Place>(value);
    }
    store(crossing_, word<Place>(), value);
  }

  template <std::size_t Place, typename Object>
  GuestAddress objectWord(Object* object, const typename Form::Arguments& values) {
    if constexpr (std::is_void_v<Object>) {
      const InterfaceInfo* const asked = observe_detail::requestedInterface<Form, Place>(values);
      if (object != nullptr && asked == nullptr)
        throw GuestFault("an object of an unknown interface is handed out");
      return object == nullptr ? 0 : crossing_.objects().wrap(static_cast<IUnknown*>(object), *asked);
    } else {
      return crossing_.objects().wrap(object, interfaceInfo<Object>());
    }
  }

  /// What the platform put into the block in its own layout.
  template <std::size_t Place, typename Value>
  void relayBlock(Value* block) {
    if constexpr (kParameter<Place>.recordCount != kNoPlace) {
      using Record = std::conditional_t<std::is_same_v<Value, BYTE>, CEPROPVAL, Value>;
      relay(crossing_, reinterpret_cast<Record*>(block), number<kParameter<Place>.recordCount>());
    } else if constexpr (std::is_same_v<Value, SRowSet>) {
      relayRows(crossing_, block);
    }
  }

  Crossing& crossing_;
  const ArgumentWords& words_;
  std::size_t firstWord_;
  bool hasBlocks_ = false;
};

template <typename Form>
bool succeeded(const typename Form::Result& result) {
  if constexpr (Form::kFailure == kReturnsHresult) {
    return SUCCEEDED(result);
  } else if constexpr (Form::kFailure.kind == Failure::Kind::Value &&
                       std::is_integral_v<typename Form::Result>) {
    return result != static_cast<typename Form::Result>(Form::kFailure.value);
  } else {
    return true;
  }
}

template <typename R>
std::uint32_t resultWord(Crossing& crossing, R result) {
  if constexpr (std::is_same_v<R, FARPROC>) {
    return crossing.functionWord(reinterpret_cast<PlatformFunction>(result));
  } else if constexpr (std::is_pointer_v<R>) {
    return crossing.word(reinterpret_cast<const void*>(result));
  } else {
    return static_cast<std::uint32_t>(result);
  }
}

}  // namespace crossing_detail

/// Makes a call of a form: `perform` takes the arguments in the platform's types. The result is the word for
/// the library's register.
template <typename Form, typename Perform>
std::uint32_t carry(Border& border, const ArgumentWords& words, std::size_t firstWord, Perform perform) {
  Crossing crossing(border);
  crossing_detail::Arguments<Form> arguments(crossing, words, firstWord);
  const auto values = arguments.toPlatform();
  if constexpr (std::is_void_v<typename Form::Result>) {
    perform(values);
    arguments.fromPlatform(values, true);
    return 0;
  } else {
    const auto result = perform(values);
    arguments.fromPlatform(values, crossing_detail::succeeded<Form>(result));
    return crossing_detail::resultWord(crossing, result);
  }
}

}  // namespace emulator::arm
