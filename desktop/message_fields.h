// The fields of a mail's record.
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "desktop/message.h"
#include "desktop/record_field.h"
#include "desktop/record_layout.h"

namespace desktop {

using MessageField = RecordField<Message>;

inline constexpr std::uint32_t kToTag = 2;
inline constexpr std::uint32_t kCcTag = 3;
inline constexpr std::uint32_t kBccTag = 4;
inline constexpr std::uint32_t kAttachmentsTag = 8;
/// The folder's number and kMessageIsRead.
inline constexpr std::uint32_t kMessageFlagsTag = 11;
inline constexpr std::uint32_t kMessageIsRead = 0x00100000;

/// All but the attachments and the flags. Those that the device takes come first.
inline constexpr std::array kMessageFields{
    MessageField{1, "from", &Message::sender},     MessageField{kToTag, "to", &Message::to},
    MessageField{kCcTag, "cc", &Message::cc},      MessageField{kBccTag, "bcc", &Message::bcc},
    MessageField{5, "subject", &Message::subject}, MessageField{6, "date", &Message::delivered},
    MessageField{7, "body", &Message::body},       MessageField{14, "has place", &Message::hasPlace},
    MessageField{15, "place", &Message::place},    MessageField{16, "start", &Message::start},
    MessageField{17, "end", &Message::end},
};

inline constexpr std::size_t kTakenMessageFields = 7;

/// What the device takes.
constexpr std::span<const MessageField> takenMessageFields() {
  return std::span(kMessageFields).first(kTakenMessageFields);
}

/// With those that no member alone has.
constexpr auto messageLayouts() {
  std::array<FieldLayout, kMessageFields.size() + 2> layouts{};
  std::ranges::transform(kMessageFields, layouts.begin(), layoutOf<Message>);
  layouts[kMessageFields.size()] = {kAttachmentsTag, "attachments", FieldEncoding::Text};
  layouts[kMessageFields.size() + 1] = {kMessageFlagsTag, "folder and flags", FieldEncoding::Number};
  return layouts;
}

}  // namespace desktop
