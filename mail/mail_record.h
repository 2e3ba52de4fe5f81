// The numbers of a mail record.
//
//   tag  field        encoding
//    1   sender       text
//    2   To           text: addresses with ";" between them
//    3   Cc           as tag 2
//    4   Bcc          as tag 2
//    5   subject      text
//    6   delivered    time, local
//    7   body         text
//    8   attachments  text, in two forms: see attachment_list.h and message_attachments.h
//    9   delivered    time, to the device only; of tags 6 and 9 the one that comes later holds
//   10   -            u32, to the device only; the device has no place for it
//   11   flags        u32, from the device only: folder code and read flag
//   13   -            text, as tag 10
//   14   has a place  u32, 1 or 0, from the device only
//   15   place        text, from the device only
//   16   start        time, local, from the device only
//   17   end          as tag 16
//
// A record from the device is a record header and its fields, each only when it is there and tag 14 always:
// 6, 5, 11, 1, 16, 17, 15, 14, 7, 2, 3, 4, 8. A record for the device is a u32 field count, a u32 that nobody
// uses, a u32 of flags (folder code and read flag) and the fields.
#pragma once

#include "platform/types.h"

namespace qorv {

namespace mail_tag {
inline constexpr DWORD kSender = 1;
inline constexpr DWORD kTo = 2;
inline constexpr DWORD kCc = 3;
inline constexpr DWORD kBcc = 4;
inline constexpr DWORD kSubject = 5;
inline constexpr DWORD kDelivered = 6;
inline constexpr DWORD kBody = 7;
inline constexpr DWORD kAttachments = 8;
inline constexpr DWORD kDeliveredToo = 9;
inline constexpr DWORD kUnusedNumber = 10;
inline constexpr DWORD kFlags = 11;
inline constexpr DWORD kUnusedText = 13;
inline constexpr DWORD kHasPlace = 14;
inline constexpr DWORD kPlace = 15;
inline constexpr DWORD kStart = 16;
inline constexpr DWORD kEnd = 17;
}  // namespace mail_tag

/// Where a message lies; 0 for none of these.
namespace folder_code {
inline constexpr DWORD kSentItems = 0xFC;
inline constexpr DWORD kOutbox = 0xFD;
inline constexpr DWORD kInbox = 0xFE;
/// A flag and not a number, unlike the others.
inline constexpr DWORD kDrafts = 0x00400000;
}  // namespace folder_code

/// Beside the folder code: the message has been read.
inline constexpr DWORD kReadFlag = 0x00100000;

}  // namespace qorv
