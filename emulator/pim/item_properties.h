// An item's properties by their numeric identifiers, as the property interface gives and takes them.
#pragma once

#include <span>

#include "emulator/database/property_block.h"
#include "emulator/pim/item_core.h"
#include "platform/item.h"

namespace emulator {

/// See IItem::GetProps. The block holds the values in the order asked and the texts and blobs that they point
/// to. MAPI_W_ERRORS_RETURNED and no block before the item's first save.
HRESULT getProps(ItemCore& item, std::span<const CEPROPID> ids, ULONG flags, CEPROPVAL** values, ULONG* size,
                 HANDLE heap);

/// Hands out values in one block of the heap, as GetProps does.
HRESULT giveValues(PlatformMemory& memory, std::span<const BlockValue> found, CEPROPVAL** values, ULONG* size,
                   HANDLE heap);

/// What GetProps makes of its arguments before it looks at the object: the out-pointers are cleared.
HRESULT checkGetProps(std::span<const CEPROPID> ids, ULONG flags, CEPROPVAL** values, ULONG* size);

/// See IItem::SetProps. E_INVALIDARG for a property that the item does not have; those before it were put.
HRESULT setProps(ItemCore& item, std::span<const CEPROPVAL> values);

/// See IItem::OpenProperty: only the body is a stream.
HRESULT openProperty(ItemCore& item, IUnknown* owner, CEPROPID id, DWORD mode, IStream** stream);

}  // namespace emulator
