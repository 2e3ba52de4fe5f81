#include "emulator/messaging/message_object.h"

#include "emulator/messaging/attachment_object.h"
#include "emulator/messaging/content_stream.h"
#include "emulator/messaging/given_values.h"
#include "emulator/messaging/message_properties.h"
#include "emulator/messaging/object_interface.h"
#include "emulator/messaging/recipient_list.h"
#include "emulator/messaging/table_object.h"

namespace emulator {

MessageObject::MessageObject(MailContext& context, std::int64_t row, bool writable)
    : PropertyObject(context, ModelClass::Message), row_(row), writable_(writable) {}

HRESULT MessageObject::OpenProperty(ULONG tag, LPCIID iid, ULONG, ULONG flags, IUnknown** object) {
  if (object == nullptr) return E_INVALIDARG;
  *object = nullptr;
  if (!asksFor(tag, PR_BODY_W)) return MAPI_E_NOT_FOUND;
  return withMessage([&](const MailMessage& message) {
    const auto make = [&] { return context().mailbox.bodyOf(message); };
    return openContent(context(), {message.body, row_, writable_}, make, iid, flags, object);
  });
}

HRESULT MessageObject::SetProps(ULONG count, SPropValue* values, SPropProblemArray** problems) {
  return changing([&](MailMessage& message) {
    const HRESULT result = takeValues(count, values, problems, [&](const SPropValue& value) {
      return setMessageProperty(context(), message, value);
    });
    if (SUCCEEDED(result)) context().mailbox.update(message);
    return result;
  });
}

HRESULT MessageObject::DeleteProps(SPropTagArray* tags, SPropProblemArray** problems) {
  if (problems != nullptr) *problems = nullptr;
  if (tags == nullptr || tags->cValues == 0 || tags->cValues > kMostTags) return E_INVALIDARG;
  return changing([&](MailMessage& message) {
    bool complete = true;
    for (const PropertyTag tag :
         std::span(static_cast<const PropertyTag*>(tags->aulPropTag), tags->cValues)) {
      if (asksFor(tag, PR_BODY_W)) {
        context().mailbox.removeBody(message);
      } else if (!deleteMessageProperty(context(), message, tag)) {
        complete = false;
      }
    }
    context().mailbox.update(message);
    return complete ? S_OK : MAPI_W_ERRORS_RETURNED;
  });
}

HRESULT MessageObject::GetAttachmentTable(ULONG, IMAPITable** table) {
  if (table == nullptr) return E_INVALIDARG;
  *table = nullptr;
  return withMessage([&](const MailMessage&) {
    std::vector<AttachmentView> views;
    for (const MailAttachment& attachment : context().mailbox.attachments(row_)) {
      views.push_back(viewOf(context(), attachment));
    }
    using Rows = ListRows<AttachmentView>;
    return openTable(context(), std::make_unique<Rows>(attachmentProperties(), std::move(views)), table);
  });
}

HRESULT MessageObject::OpenAttach(ULONG number, LPCIID iid, ULONG flags, IAttach** attachment) {
  if (attachment == nullptr) return E_INVALIDARG;
  *attachment = nullptr;
  if (!isInterfaceOf<IAttach>(iid)) return E_NOINTERFACE;
  if (asksToWrite(flags) && !writable_) return MAPI_E_NO_ACCESS;
  return withMessage([&](const MailMessage&) {
    if (!context().mailbox.attachment(row_, number)) return MAPI_E_NOT_FOUND;
    *attachment = new AttachmentObject(context(), row_, number, asksToWrite(flags));
    return S_OK;
  });
}

HRESULT MessageObject::CreateAttach(LPCIID iid, ULONG, ULONG* number, IAttach** attachment) {
  if (number == nullptr || attachment == nullptr) return E_INVALIDARG;
  *attachment = nullptr;
  if (!isInterfaceOf<IAttach>(iid)) return E_NOINTERFACE;
  return changing([&](const MailMessage& message) {
    const MailAttachment made = context().mailbox.addAttachment(message);
    *attachment = new AttachmentObject(context(), row_, made.number, true);
    *number = made.number;
    return S_OK;
  });
}

HRESULT MessageObject::DeleteAttach(ULONG number, ULONG_PTR, IMAPIProgress*, ULONG) {
  return changing([&](const MailMessage&) {
    const auto attachment = context().mailbox.attachment(row_, number);
    if (!attachment) return MAPI_E_NOT_FOUND;
    context().mailbox.removeAttachment(*attachment);
    return S_OK;
  });
}

HRESULT MessageObject::GetRecipientTable(ULONG, IMAPITable** table) {
  if (table == nullptr) return E_INVALIDARG;
  *table = nullptr;
  return withMessage([&](const MailMessage&) {
    using Rows = ListRows<RecipientRow>;
    auto rows = recipientRows(context().mailbox.recipients(row_));
    return openTable(context(), std::make_unique<Rows>(recipientProperties(), std::move(rows)), table);
  });
}

HRESULT MessageObject::ModifyRecipients(ULONG flags, ADRLIST* list) {
  return changing([&](const MailMessage& message) {
    std::vector<MailRecipient> recipients = context().mailbox.recipients(row_);
    const HRESULT result = modifyRecipients(recipients, flags, list);
    if (SUCCEEDED(result)) context().mailbox.setRecipients(message, recipients);
    return result;
  });
}

std::optional<Properties> MessageObject::properties() {
  const auto message = context().mailbox.load(row_);
  if (!message) return std::nullopt;
  const auto read = [&shared = context(), stored = *message](PropertyTag asked) {
    return messageValue(shared, stored, asked);
  };
  return Properties{messageTags(context()), read};
}

HRESULT MessageObject::withMessage(const std::function<HRESULT(MailMessage&)>& use) {
  return atBoundary([&] {
    auto message = context().mailbox.load(row_);
    return message ? use(*message) : MAPI_E_NOT_FOUND;
  });
}

HRESULT MessageObject::changing(const std::function<HRESULT(MailMessage&)>& change) {
  return writable_ ? withMessage(change) : MAPI_E_NO_ACCESS;
}

}  // namespace emulator
