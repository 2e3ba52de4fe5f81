// The device's message store, and its row in the table of stores.
#pragma once

#include "emulator/messaging/messaging_object.h"
#include "emulator/messaging/row_source.h"
#include "emulator/messaging/unsupported_members.h"

namespace emulator {

class MailStoreObject final : public UnsupportedStoreMembers<PropertyObject<IMsgStore>> {
 public:
  explicit MailStoreObject(MailContext& context);

  HRESULT OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                    IUnknown** object) override;

 private:
  std::optional<Properties> properties() override;
};

/// The one store that the device has.
std::unique_ptr<RowSource> storeRows();

}  // namespace emulator
