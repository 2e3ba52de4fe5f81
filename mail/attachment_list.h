// The attachment list of a record for the device, in its text form.
//
//   count, one character, then for each attachment:
//   length of the path, one character, the path, length of the name, one character, the name
//
// Numbers are decimal and may have white space and a sign in front; nobody looks at the character behind a
// number. For example "1 6 \a.txt5 a.txt": the file \a.txt, to be called a.txt.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qorv {

struct ListedAttachment {
  std::u16string path;
  std::u16string name;
};

/// Walks a list and never leaves its text, whatever its numbers say.
class AttachmentList {
 public:
  /// The text must be NUL-terminated and outlive the list.
  explicit AttachmentList(const char16_t* text);

  /// Nothing at the end, which is also where a number is missing or negative or the text is shorter than it
  /// says. An attachment whose path or name is too long for the device (MAX_PATH with its terminator) is
  /// passed over.
  std::optional<ListedAttachment> next();

 private:
  std::optional<std::size_t> readNumber();
  std::optional<std::u16string_view> readText();

  std::u16string_view rest_;
  std::size_t remaining_;
};

}  // namespace qorv
