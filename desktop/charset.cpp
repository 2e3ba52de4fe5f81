#include "desktop/charset.h"

#include <array>
#include <cerrno>
#include <iconv.h>

#include "desktop/item_refused.h"
#include "desktop/text.h"

namespace desktop {

namespace {

class Converter {
 public:
  explicit Converter(const std::string& charset) : converter_(iconv_open("UTF-8", charset.c_str())) {
    // What iconv_open fails with is no pointer, so that it is no null either.
    if (converter_ == reinterpret_cast<iconv_t>(-1)) {
      throw ItemRefused("the character set " + onOneLine(charset) + " is unknown");
    }
  }
  ~Converter() { iconv_close(converter_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// Converts a part of the bytes, and moves on behind it; false at bytes that can't be converted.
  bool convert(char*& from, std::size_t& left, std::string& out) {
    std::array<char, 4096> buffer;
    char* to = buffer.data();
    std::size_t room = buffer.size();
    const bool isDone = iconv(converter_, &from, &left, &to, &room) != static_cast<std::size_t>(-1);
    const bool isFull = errno == E2BIG;
    out.append(buffer.data(), to);
    return isDone || isFull;
  }

 private:
  iconv_t converter_;
};

}  // namespace

std::string convertToUtf8(std::string_view text, const std::string& charset) {
  Converter converter(charset);
  std::string bytes(text);  // the call wants them changeable, and leaves them alone
  char* from = bytes.data();
  std::size_t left = bytes.size();
  std::string out;
  while (left > 0) {
    if (!converter.convert(from, left, out))
      throw ItemRefused("a text is none in the character set " + charset);
  }
  return out;
}

}  // namespace desktop
