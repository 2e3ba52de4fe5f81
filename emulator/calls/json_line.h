// Builds one line of JSON, value by value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace emulator {

/// Values and closed brackets follow one another with ", "; the caller opens and closes in pairs.
class JsonLine {
 public:
  void null();
  void number(std::int64_t value);
  void number(std::uint64_t value);
  /// Null when the value is not finite, which JSON can't say.
  void number(double value);
  /// Everything outside ASCII is escaped, so that a text of half a surrogate pair stays what it is.
  void text(std::u16string_view value);
  /// The characters as they stand, up to U+00FF.
  void text(std::string_view value);

  void beginArray() { open('['); }
  void endArray() { line_ += ']'; }
  void beginObject() { open('{'); }
  void endObject() { line_ += '}'; }
  /// The next value's name within an object.
  void key(std::string_view name);

  const std::string& str() const { return line_; }

 private:
  void open(char bracket);
  void separate();
  void character(char16_t unit);

  std::string line_;
};

}  // namespace emulator
