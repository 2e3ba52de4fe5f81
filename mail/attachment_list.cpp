#include "mail/attachment_list.h"

#include "mail/decimal_prefix.h"
#include "platform/files.h"

namespace qorv {

AttachmentList::AttachmentList(const char16_t* text) : rest_(text), remaining_(readNumber().value_or(0)) {}

std::optional<std::size_t> AttachmentList::readNumber() {
  LONG number = 0;
  const LPCWSTR behind = ParseDecimalPrefix(rest_.data(), number);
  const auto digits = static_cast<std::size_t>(behind - rest_.data());
  if (digits == 0 || number < 0) return std::nullopt;
  rest_.remove_prefix(digits);
  if (!rest_.empty()) rest_.remove_prefix(1);
  return static_cast<std::size_t>(number);
}

std::optional<std::u16string_view> AttachmentList::readText() {
  const auto length = readNumber();
  if (!length || *length > rest_.size()) return std::nullopt;
  const std::u16string_view text = rest_.substr(0, *length);
  rest_.remove_prefix(*length);
  return text;
}

std::optional<ListedAttachment> AttachmentList::next() {
  while (remaining_ > 0) {
    --remaining_;
    const auto path = readText();
    const auto name = path ? readText() : std::nullopt;
    if (!name) break;
    if (path->size() < MAX_PATH && name->size() < MAX_PATH) {
      return ListedAttachment{std::u16string(*path), std::u16string(*name)};
    }
  }
  remaining_ = 0;
  return std::nullopt;
}

}  // namespace qorv
