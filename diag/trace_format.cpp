#include "diag/trace_format.h"

#include <algorithm>
#include <array>
#include <string>

namespace qorv {

namespace {

/// What stands between a % and its conversion.
struct Directive {
  bool left = false;
  bool zeros = false;
  bool alternative = false;
  char16_t sign = 0;  ///< stands in front of positive numbers
  int width = 0;
  int precision = -1;  ///< negative when none is given
  char16_t conversion = 0;
};

constexpr std::u16string_view kFlags = u"-0#+ ";
constexpr std::u16string_view kLengths = u"hlLIw";
constexpr std::u16string_view kNull = u"(null)";
/// A width or precision beyond any message.
constexpr int kMaxField = 4096;
constexpr int kAddressDigits = 8;

bool isDigit(char16_t character) {
  return character >= u'0' && character <= u'9';
}

std::u16string digitsOf(std::uint64_t number, unsigned base, bool upper) {
  const std::u16string_view symbols = upper ? u"0123456789ABCDEF" : u"0123456789abcdef";
  std::u16string digits;
  for (; number != 0; number /= base) digits += symbols[static_cast<std::size_t>(number % base)];
  std::ranges::reverse(digits);
  return digits;
}

unsigned baseOf(char16_t conversion) {
  if (conversion == u'o') return 8;
  return conversion == u'x' || conversion == u'X' || conversion == u'p' ? 16 : 10;
}

}  // namespace

class TraceFormatter {
 public:
  TraceFormatter(std::span<WCHAR> message, std::u16string_view format,
                 std::span<const TraceArgument> arguments)
      : message_(message), format_(format), arguments_(arguments) {}

  std::size_t run() {
    while (place_ < format_.size()) {
      const std::size_t begin = place_;
      if (format_[place_++] != u'%' || !convert()) put(format_.substr(begin, place_ - begin));
    }
    if (!message_.empty()) message_[length_] = u'\0';
    return length_;
  }

 private:
  /// False when the directive is to be printed as it stands.
  bool convert() {
    Directive directive = readDirective();
    if (directive.conversion == u'%') {
      put(u"%");
      return true;
    }
    const bool isKnown =
        std::u16string_view(u"diuoxXcCsSp").find(directive.conversion) != std::u16string_view::npos;
    if (!isKnown || arguments_.empty()) return false;
    std::visit([&](const auto& value) { print(directive, value); }, takeArgument().value_);
    return true;
  }

  Directive readDirective() {
    Directive directive;
    while (readFlag(directive)) ++place_;
    directive.width = readNumber();
    if (directive.width < 0) {
      directive.left = true;
      directive.width = -directive.width;
    }
    if (peek() == u'.') {
      ++place_;
      directive.precision = readNumber();
    }
    skipLength();
    if (place_ < format_.size()) directive.conversion = format_[place_++];
    return directive;
  }

  bool readFlag(Directive& directive) const {
    const char16_t flag = peek();
    if (flag == u'-') directive.left = true;
    if (flag == u'0') directive.zeros = true;
    if (flag == u'#') directive.alternative = true;
    if (flag == u'+' || (flag == u' ' && directive.sign == 0)) directive.sign = flag;
    return flag != u'\0' && kFlags.find(flag) != std::u16string_view::npos;
  }

  /// A width or precision; * takes it from the arguments.
  int readNumber() {
    if (peek() == u'*') {
      ++place_;
      return arguments_.empty() ? 0 : fieldFrom(takeArgument());
    }
    int number = 0;
    for (; isDigit(peek()); ++place_) number = std::min(number * 10 + (peek() - u'0'), kMaxField);
    return number;
  }

  static int fieldFrom(const TraceArgument& argument) {
    const auto* number = std::get_if<TraceArgument::Number>(&argument.value_);
    return number ? static_cast<int>(std::clamp<std::int64_t>(number->asSigned, -kMaxField, kMaxField)) : 0;
  }

  void skipLength() {
    while (kLengths.find(peek()) != std::u16string_view::npos) {
      const bool isSized = format_.substr(place_, 3) == u"I64" || format_.substr(place_, 3) == u"I32";
      place_ += isSized ? 3 : 1;
    }
  }

  void print(const Directive& directive, const TraceArgument::Number& number) {
    const bool isSigned = directive.conversion == u'd' || directive.conversion == u'i';
    if (directive.conversion == u'c' || directive.conversion == u'C') {
      const auto character = static_cast<char16_t>(number.asUnsigned);
      pad(directive, {}, {&character, 1});
    } else if (isSigned && number.asSigned < 0) {
      printDigits(directive, u"-", 0 - static_cast<std::uint64_t>(number.asSigned));
    } else if (isSigned) {
      const std::u16string sign(directive.sign != 0 ? 1 : 0, directive.sign);
      printDigits(directive, sign, static_cast<std::uint64_t>(number.asSigned));
    } else {
      printDigits(directive, {}, number.asUnsigned);
    }
  }

  void print(Directive directive, const void* address) {
    directive.conversion = u'p';
    directive.precision = std::max(directive.precision, kAddressDigits);
    printDigits(directive, {}, reinterpret_cast<std::uintptr_t>(address));
  }

  void print(const Directive& directive, LPCWSTR text) {
    std::u16string_view shown = text ? std::u16string_view(text) : kNull;
    if (directive.precision >= 0) shown = shown.substr(0, static_cast<std::size_t>(directive.precision));
    pad(directive, {}, shown);
  }

  void print(const Directive& directive, const char* text) {
    if (!text) return print(directive, LPCWSTR{});
    std::u16string wide;
    for (const char byte : std::string_view(text)) wide += static_cast<unsigned char>(byte);
    print(directive, wide.c_str());
  }

  void printDigits(const Directive& directive, std::u16string_view sign, std::uint64_t number) {
    const char16_t conversion = directive.conversion;
    std::u16string digits = digitsOf(number, baseOf(conversion), conversion == u'X' || conversion == u'p');
    std::u16string prefix(sign);
    if (directive.alternative && number != 0 && (conversion == u'x' || conversion == u'X')) {
      prefix += {u'0', conversion};
    }
    std::size_t least = directive.precision < 0 ? 1 : static_cast<std::size_t>(directive.precision);
    if (directive.alternative && conversion == u'o') least = std::max(least, digits.size() + 1);
    const bool fills = directive.zeros && !directive.left && directive.precision < 0;
    const auto width = static_cast<std::size_t>(directive.width);
    if (fills && width > prefix.size()) least = std::max(least, width - prefix.size());
    if (digits.size() < least) digits.insert(0, least - digits.size(), u'0');
    pad(directive, prefix, digits);
  }

  void pad(const Directive& directive, std::u16string_view prefix, std::u16string_view text) {
    const std::size_t length = prefix.size() + text.size();
    const auto width = static_cast<std::size_t>(directive.width);
    const std::u16string blanks(width > length ? width - length : 0, u' ');
    if (!directive.left) put(blanks);
    put(prefix);
    put(text);
    if (directive.left) put(blanks);
  }

  void put(std::u16string_view text) {
    const std::size_t room = message_.empty() ? 0 : message_.size() - 1 - length_;
    text = text.substr(0, room);
    std::ranges::copy(text, message_.begin() + static_cast<std::ptrdiff_t>(length_));
    length_ += text.size();
  }

  [[nodiscard]] char16_t peek() const { return place_ < format_.size() ? format_[place_] : u'\0'; }

  const TraceArgument& takeArgument() {
    const TraceArgument& argument = arguments_.front();
    arguments_ = arguments_.subspan(1);
    return argument;
  }

  std::span<WCHAR> message_;
  std::u16string_view format_;
  std::span<const TraceArgument> arguments_;
  std::size_t place_ = 0;
  std::size_t length_ = 0;
};

std::size_t formatTrace(std::span<WCHAR> message, std::u16string_view format,
                        std::span<const TraceArgument> arguments) {
  return TraceFormatter(message, format, arguments).run();
}

}  // namespace qorv
