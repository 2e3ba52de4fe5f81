#include "mail/message_writer.h"

#include "mail/mail_record.h"
#include "mail/mail_time.h"
#include "mail/properties.h"
#include "mail/recipients.h"

namespace qorv {

namespace {

/// Zeros, which the library passes over, for a text that the record doesn't have.
SPropValue textValue(ULONG tag, const RequestText& text) {
  return text ? SPropValue{tag, 0, {.lpszW = text.get()}} : SPropValue{};
}

SPropValue timeValue(ULONG tag, const SYSTEMTIME& time) {
  const auto converted = toMessageTime(time);
  return converted ? SPropValue{tag, 0, {.ft = *converted}} : SPropValue{};
}

void writeBody(IMessage& message, const RequestText& body) {
  if (!body) return;
  const ComPtr<IStream> stream = openStream(message, PR_BODY_W, MAPI_CREATE | MAPI_MODIFY);
  if (!stream) return;
  ULONG written = 0;
  stream->Write(body.get(), static_cast<ULONG>((body.length() + 1) * sizeof(WCHAR)), &written);
}

}  // namespace

void fillMessage(IMessage& message, const PendingMessage& pending) {
  const LONG isRead = (pending.flags & kReadFlag) != 0 ? MSGFLAG_READ : 0;
  SPropValue values[] = {
      {PR_MESSAGE_FLAGS, 0, {.l = isRead}},
      textValue(PR_SUBJECT_W, pending.subject),
      timeValue(PR_MESSAGE_DELIVERY_TIME, pending.delivered),
      textValue(PR_SENDER_EMAIL_ADDRESS_W, pending.sender),
  };
  writeBody(message, pending.body);
  addRecipients(message, pending);
  message.SetProps(static_cast<ULONG>(std::size(values)), values, nullptr);
  message.SaveChanges(0);
}

}  // namespace qorv
