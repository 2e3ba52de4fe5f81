// What every record writer does with the body of an item and with an item that was saved.
#pragma once

#include "channel/request_reader.h"
#include "channel/wire.h"
#include "pim/long_body.h"
#include "platform/errors.h"
#include "platform/outlook.h"

namespace qorv {

/// The identifier of a saved item; 0 before it has one, or when it can't be asked for.
template <typename Item>
DWORD oidOf(Item& item) {
  LONG oid = 0;
  return SUCCEEDED(item.get_Oid(&oid)) ? static_cast<DWORD>(oid) : 0;
}

/// Puts a body that the property takes; a longer one waits for the save.
template <typename Item>
void putShortBody(Item& item, const RequestText& body) {
  if (body.length() < kLongBodyLength) item.put_Body(body.get());
}

/// The saved item's OID goes into the header, and a body that was too long to be put into the item's stream.
template <typename Item>
void finishSaved(IPOutlookApp& application, Item& item, const RequestText& body, ItemReplyHeader& header) {
  header.oid = oidOf(item);
  WriteLongBody(application, body.get(), static_cast<LONG>(header.oid));
}

}  // namespace qorv
