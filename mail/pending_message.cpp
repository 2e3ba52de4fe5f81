#include "mail/pending_message.h"

#include <algorithm>

#include "mail/mail_record.h"

namespace qorv {

namespace {

namespace tag = mail_tag;

struct Reading {
  RequestReader& request;
  const BYTE* cursor;
  DWORD& position;
  PendingMessage& message;
};

template <RequestText PendingMessage::*Text>
void readText(const Reading& from) {
  from.message.*Text = from.request.ReadString(from.cursor, from.position);
}

void readDelivered(const Reading& from) {
  from.message.delivered = from.request.ReadSystemTime(from.cursor, from.position, TimeMode::KeepTime);
}

void skipText(const Reading& from) {
  from.request.ReadString(from.cursor, from.position);
}

void skipNumber(const Reading& from) {
  from.request.ReadDword(from.cursor, from.position);
}

struct Field {
  DWORD tag;
  void (*read)(const Reading& from);
};

// A tag that is not here has no value: the next word is the next tag.
constexpr Field kFields[] = {
    {tag::kSender, readText<&PendingMessage::sender>},
    {tag::kTo, readText<&PendingMessage::to>},
    {tag::kCc, readText<&PendingMessage::cc>},
    {tag::kBcc, readText<&PendingMessage::bcc>},
    {tag::kSubject, readText<&PendingMessage::subject>},
    {tag::kDelivered, readDelivered},
    {tag::kBody, readText<&PendingMessage::body>},
    {tag::kAttachments, readText<&PendingMessage::attachments>},
    {tag::kDeliveredToo, readDelivered},
    {tag::kUnusedNumber, skipNumber},
    {tag::kUnusedText, skipText},
};

}  // namespace

PendingMessage readPendingMessage(RequestReader& request, const BYTE* cursor, DWORD& position) {
  PendingMessage message;
  const DWORD count = request.ReadDword(cursor, position);
  request.ReadDword(cursor, position);
  message.flags = request.ReadDword(cursor, position);
  for (DWORD i = 0; i < count && !request.requestCut(); ++i) {
    const DWORD fieldTag = request.ReadDword(cursor, position);
    const auto* field = std::ranges::find(kFields, fieldTag, &Field::tag);
    if (field != std::ranges::end(kFields)) field->read({request, cursor, position, message});
  }
  return message;
}

}  // namespace qorv
