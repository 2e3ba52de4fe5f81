// The handler of mail messages. Every request logs on to the messaging library and scans the store anew.
#pragma once

#include "mail/mailbox.h"
#include "mail/pending_message.h"
#include "service/api_base.h"

namespace qorv {

class CCEMail2 : public CQorvApiBase {
 public:
  CCEMail2();

  /// True also when there was no such message.
  bool DeleteItemByOid(DataType type, DWORD oid) override;
  bool DeleteItem() override;
  /// Drafts, Sent Items, Outbox and Inbox.
  bool DeleteAllItems() override;
  bool CountItems() override;
  bool ReadItemRecord(IDispatch* item, DWORD oid) override;
  bool GetAllItems() override;
  /// The header's OID says which message is changed; 0 makes a new one.
  bool WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                       ItemReplyHeader& header) override;

 private:
  [[nodiscard]] IMAPIFolder* folderFor(DWORD flags) const;
  ComPtr<IMessage> obtainMessage(IMAPIFolder& folder, DWORD oid);

  Mailbox mailbox_;
};

}  // namespace qorv
