// An attachment of a message.
#pragma once

#include "emulator/messaging/messaging_object.h"

namespace emulator {

/// An attachment as it is stored, and its bytes.
struct AttachmentView {
  MailAttachment attachment;
  std::int64_t size;
};

/// The columns of an attachment table.
std::span<const ReadableProperty<AttachmentView>> attachmentProperties();
AttachmentView viewOf(MailContext& context, const MailAttachment& attachment);

/// What is set or written is in the store at once.
class AttachmentObject final : public PropertyObject<IAttach> {
 public:
  AttachmentObject(MailContext& context, std::int64_t message, ULONG number, bool writable);

  HRESULT OpenProperty(ULONG tag, LPCIID iid, ULONG options, ULONG flags, IUnknown** object) override;
  HRESULT SetProps(ULONG count, SPropValue* values, SPropProblemArray** problems) override;

 private:
  std::optional<Properties> properties() override;
  std::optional<MailAttachment> load();

  std::int64_t message_;
  ULONG number_;
  bool writable_;
};

}  // namespace emulator
