// A device with messages, and the mail records of its replies and requests.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/support/agent_test.h"

namespace test {

/// The tags of mail fields.
enum MailTag : unsigned {
  kSender = 1,
  kTo = 2,
  kCc = 3,
  kBcc = 4,
  kSubject = 5,
  kDelivered = 6,
  kBody = 7,
  kAttachments = 8,
  kDeliveredToo = 9,
  kFlags = 11,
  kHasPlace = 14,
  kPlace = 15,
  kStart = 16,
  kEnd = 17,
};

inline constexpr unsigned kDraft = 0x400000;
inline constexpr unsigned kSent = 0xFC;
inline constexpr unsigned kOutbox = 0xFD;
inline constexpr unsigned kInbox = 0xFE;
inline constexpr unsigned kRead = 0x100000;

/// The head of a record for the device: field count, a word that nobody uses, flags. The fields follow.
inline Bytes mailRecord(unsigned count, unsigned flags = kInbox) {
  return Bytes().u32(count).u32(0xEEEEEEEE).u32(flags);
}
inline Bytes mailText(unsigned tag, std::u16string_view text) {
  return Bytes().u32(tag).text(text);
}

/// A record of a reply: its header and its fields, each with its value's bytes.
struct MailRecord {
  Bytes header;
  std::vector<std::pair<unsigned, Bytes>> fields;

  [[nodiscard]] std::vector<unsigned> tags() const;
  /// Null when it isn't there.
  [[nodiscard]] const Bytes* find(unsigned tag) const;
  /// A text field's text; "(none)" when it isn't there.
  [[nodiscard]] std::u16string text(unsigned tag) const;
  [[nodiscard]] DWORD number(unsigned tag) const;
};

/// Reads one record from `offset` on and moves it behind the record.
MailRecord parseMailRecord(const Bytes& reply, std::size_t& offset);

class MailTest : public AgentTest {
 protected:
  /// Merges a snapshot into the device.
  void load(const std::string& snapshot);
  /// The messages of a folder, as a snapshot has them.
  nlohmann::json folder(const std::string& name);
  /// A file's content; nothing when there is no such file.
  std::optional<std::string> file(const std::string& path);

  /// The record of the message of that number.
  MailRecord read(DWORD id);
  /// Adds a message and returns its number.
  DWORD add(const Bytes& record);
};

}  // namespace test
