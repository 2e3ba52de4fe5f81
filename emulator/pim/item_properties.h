// An item's properties by their numeric identifiers, as the property interface gives and takes them.
#pragma once

#include <span>

#include "emulator/pim/item_core.h"
#include "platform/item.h"

namespace emulator {

/// See IItem::GetProps. The block holds the values in the order asked and the texts and blobs that they point
/// to. MAPI_W_ERRORS_RETURNED and no block before the item's first save.
HRESULT getProps(ItemCore& item, std::span<const CEPROPID> ids, ULONG flags, CEPROPVAL** values, ULONG* size,
                 HANDLE heap);

/// See IItem::SetProps. E_INVALIDARG for a property that the item does not have; those before it were put.
HRESULT setProps(ItemCore& item, std::span<const CEPROPVAL> values);

/// See IItem::OpenProperty: only the body is a stream.
HRESULT openProperty(ItemCore& item, IUnknown* owner, CEPROPID id, DWORD mode, IStream** stream);

}  // namespace emulator
