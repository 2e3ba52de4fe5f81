// One mail as the desktop holds it: plain values between the wire record and a file of the mail format.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "desktop/attached_file.h"
#include "desktop/local_time.h"

namespace desktop {

/// The device's own numbers.
enum class MailFolder : std::uint32_t {
  None = 0,
  SentItems = 0xFC,
  Outbox = 0xFD,
  Inbox = 0xFE,
  Drafts = 0x00400000,
};

/// Texts are UTF-16; an empty one is none.
struct Message {
  std::uint32_t oid = 0;  ///< the device's number of it; 0 before it has one
  MailFolder folder = MailFolder::Inbox;
  bool isRead = false;
  std::u16string sender;
  std::u16string to;  ///< addresses, with names or without, and ";" between them
  std::u16string cc;
  std::u16string bcc;
  std::u16string subject;
  LocalTime delivered;
  std::u16string body;
  std::vector<AttachedFile> attachments;

  // Of a message about a meeting; the device sends these and takes none of them.
  bool hasPlace = false;
  std::u16string place;
  LocalTime start;
  LocalTime end;
};

}  // namespace desktop
