// Reads the tagged fields of a record for the device.
#pragma once

#include <algorithm>
#include <optional>

#include "channel/request_reader.h"
#include "pim/date_conversion.h"
#include "pim/recurrence_block.h"
#include "platform/outlook.h"

namespace qorv {

/// A record of the request and the position in it. What lies past the request's end reads as zero or empty, and the
/// record counts as cut short from then on.
class FieldReader {
 public:
  FieldReader(IPOutlookApp& application, RequestReader& request, const BYTE* record)
      : application_(application), request_(request), record_(record) {}

  /// Reads the record from its first byte: the u32 field count and that many tags. `readValue`, which takes a tag,
  /// reads what belongs to it; a tag that it doesn't know has no value, and the next word is the next tag. False when
  /// the record was cut short.
  template <typename ReadValue>
  bool walk(ReadValue readValue) {
    position_ = 0;
    const DWORD count = number();
    for (DWORD i = 0; i < count && !cut(); ++i) readValue(number());
    return !cut();
  }

  DWORD number() { return request_.ReadDword(record_, position_); }
  RequestText text() { return request_.ReadString(record_, position_); }
  /// Nothing for a time that is no date.
  std::optional<DATE> date(TimeMode mode = TimeMode::KeepTime) {
    return toDate(application_, request_.ReadSystemTime(record_, position_, mode));
  }
  /// False when the block is not all there.
  bool block(RecurrenceBlock& block) {
    const BYTE* at = bytes(kRecurrenceBlockSize);
    if (at) block.assign(RecurrenceBlock::Bytes(at, kRecurrenceBlockSize));
    return at != nullptr;
  }
  /// The next `size` bytes where they lie in the request, or null when they are not all there.
  const BYTE* bytes(DWORD size) { return request_.ReadBytes(record_, position_, size); }

  [[nodiscard]] bool cut() const { return request_.requestCut(); }
  /// The bytes of the record that were read.
  [[nodiscard]] DWORD consumed() const { return position_; }

 private:
  IPOutlookApp& application_;
  RequestReader& request_;
  const BYTE* record_;
  DWORD position_ = 0;
};

/// The row of a tag in a table of fields, or null.
template <typename Field, std::size_t size>
const Field* findField(const Field (&fields)[size], DWORD tag) {
  const Field* found = std::ranges::find(fields, tag, &Field::tag);
  return found != std::ranges::end(fields) ? found : nullptr;
}

}  // namespace qorv
