// A message of the store.
#pragma once

#include "emulator/messaging/messaging_object.h"

namespace emulator {

/// Every change is in the store at once; SaveChanges has nothing left to do, and what follows it counts as well.
class MessageObject final : public PropertyObject<IMessage> {
 public:
  /// `row` is the message's; see MailMessage.
  MessageObject(MailContext& context, std::int64_t row, bool writable);

  HRESULT OpenProperty(ULONG tag, LPCIID iid, ULONG options, ULONG flags, IUnknown** object) override;
  HRESULT SetProps(ULONG count, SPropValue* values, SPropProblemArray** problems) override;
  HRESULT DeleteProps(SPropTagArray* tags, SPropProblemArray** problems) override;

  HRESULT GetAttachmentTable(ULONG flags, IMAPITable** table) override;
  HRESULT OpenAttach(ULONG number, LPCIID iid, ULONG flags, IAttach** attachment) override;
  HRESULT CreateAttach(LPCIID iid, ULONG flags, ULONG* number, IAttach** attachment) override;
  HRESULT DeleteAttach(ULONG number, ULONG_PTR ui, IMAPIProgress* progress, ULONG flags) override;
  HRESULT GetRecipientTable(ULONG flags, IMAPITable** table) override;
  HRESULT ModifyRecipients(ULONG flags, ADRLIST* recipients) override;
  /// Nothing of the device sends.
  HRESULT SubmitMessage(ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetReadFlag(ULONG) override { return MAPI_E_NO_SUPPORT; }

 private:
  std::optional<Properties> properties() override;
  /// Does something with the stored message, or fails because it is gone.
  HRESULT withMessage(const std::function<HRESULT(MailMessage&)>& use);
  /// The same for a change: only when the message was opened for writing.
  HRESULT changing(const std::function<HRESULT(MailMessage&)>& change);

  std::int64_t row_;
  bool writable_;
};

}  // namespace emulator
