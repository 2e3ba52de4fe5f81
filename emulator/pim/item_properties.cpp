#include "emulator/pim/item_properties.h"

#include <cstring>
#include <utility>

#include "emulator/pim/ansi_text.h"
#include "emulator/pim/body_stream.h"
#include "emulator/pim/stored_recurrence.h"
#include "platform/files.h"

namespace emulator {
namespace {

constexpr CEPROPID kOidProperty = 0x10000066;
constexpr CEPROPID kIsRecurringProperty = 0x0022000B;
constexpr CEPROPID kBodyText = 0x101F001F;

std::optional<std::size_t> placeOfTag(const ItemTable& table, CEPROPID id) {
  for (std::size_t place = 0; place < table.properties.size(); ++place) {
    if (table.properties[place].tag == id && id != 0) return place;
  }
  return std::nullopt;
}

void setText(BlockValue& found, const std::u16string& text) {
  found.bytes.resize((text.size() + 1) * sizeof(char16_t));
  std::memcpy(found.bytes.data(), text.c_str(), found.bytes.size());
}

void setValue(BlockValue& found, const PropertyValue& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) setText(found, *text);
  if (const auto* number = std::get_if<std::int32_t>(&value)) found.value.val.lVal = *number;
  if (const auto* flag = std::get_if<bool>(&value)) found.value.val.boolVal = *flag ? TRUE : FALSE;
}

bool isRecurrence(const PimItem& item, CEPROPID id) {
  return id == (item.kind() == ObjectKind::Task ? kTaskRecurrenceProperty : kAppointmentRecurrenceProperty);
}

BlockValue find(ItemCore& core, const PimItem& item, CEPROPID id) {
  BlockValue found;
  found.value.propid = id;
  if (id == kOidProperty) {
    found.value.val.ulVal = item.oid;
  } else if (id == kIsRecurringProperty && item.kind() != ObjectKind::Contact) {
    found.value.val.boolVal = item.rule ? TRUE : FALSE;
  } else if (const auto place = placeOfTag(item.properties.table(), id)) {
    setValue(found, item.properties.value(*place));
  } else if (item.rule && isRecurrence(item, id)) {
    found.bytes = storedRecurrence(core.context().items, item);
  } else {
    found.value.wFlags = CEDB_PROPNOTFOUND;
  }
  return found;
}

std::optional<PropertyValue> valueOf(const CEPROPVAL& value, PropertyType type) {
  switch (type) {
    case PropertyType::Text:
      return value.val.lpwstr == nullptr ? std::u16string() : std::u16string(value.val.lpwstr);
    case PropertyType::Number:
      return value.val.lVal;
    case PropertyType::Flag:
      return value.val.boolVal != FALSE;
    case PropertyType::Date:
      break;
  }
  return std::nullopt;
}

HRESULT setOne(ItemCore& core, PimItem& item, const CEPROPVAL& value) {
  const auto place = placeOfTag(item.properties.table(), value.propid);
  if (!place) return E_INVALIDARG;
  auto put = valueOf(value, item.properties.property(*place).type);
  return put ? core.context().items.put(item.properties, *place, std::move(*put)) : E_INVALIDARG;
}

}  // namespace

HRESULT checkGetProps(std::span<const CEPROPID> ids, ULONG flags, CEPROPVAL** values, ULONG* size) {
  if (values == nullptr || size == nullptr) return E_POINTER;
  *values = nullptr;
  *size = 0;
  const bool isAsked = ids.data() != nullptr && !ids.empty();
  return isAsked && (flags & CEDB_ALLOWREALLOC) != 0 ? S_OK : E_INVALIDARG;
}

HRESULT giveValues(PlatformMemory& memory, std::span<const BlockValue> found, CEPROPVAL** values, ULONG* size,
                   HANDLE heap) {
  const std::size_t bytes = blockSize(found);
  void* const block = memory.allocateBlock(heap, bytes);
  if (block == nullptr) return E_OUTOFMEMORY;
  fillBlock(static_cast<std::uint8_t*>(block), found);
  *values = static_cast<CEPROPVAL*>(block);
  *size = static_cast<ULONG>(bytes);
  return S_OK;
}

HRESULT getProps(ItemCore& core, std::span<const CEPROPID> ids, ULONG flags, CEPROPVAL** values, ULONG* size,
                 HANDLE heap) {
  const HRESULT checked = checkGetProps(ids, flags, values, size);
  if (FAILED(checked)) return checked;
  if (core.oid() == 0) return MAPI_W_ERRORS_RETURNED;
  return atBoundary([&] {
    const PimItem* item = core.item();
    if (item == nullptr) return E_FAIL;
    std::vector<BlockValue> found;
    for (const CEPROPID id : ids) found.push_back(find(core, *item, id));
    return giveValues(core.context().memory, found, values, size, heap);
  });
}

HRESULT setProps(ItemCore& core, std::span<const CEPROPVAL> values) {
  if (values.data() == nullptr || values.empty()) return E_INVALIDARG;
  return atBoundary([&] {
    PimItem* item = core.item();
    if (item == nullptr) return E_FAIL;
    for (const CEPROPVAL& value : values) {
      const HRESULT result = setOne(core, *item, value);
      if (FAILED(result)) return result;
    }
    return S_OK;
  });
}

HRESULT openProperty(ItemCore& core, IUnknown* owner, CEPROPID id, DWORD mode, IStream** stream) {
  if (stream == nullptr) return E_POINTER;
  *stream = nullptr;
  if (id != PIMPR_BODY_BINARY) return E_INVALIDARG;
  return atBoundary([&] {
    const PimItem* item = core.item();
    const auto body = placeOfTag(tableOf(core.kind()), kBodyText);
    if (item == nullptr || !body) return E_FAIL;
    const bool writable = (mode & GENERIC_WRITE) != 0;
    auto bytes = writable ? std::vector<std::uint8_t>() : toAnsi(item->properties.get<std::u16string>(*body));
    *stream = new BodyStream(core, owner, *body, std::move(bytes), writable);
    return S_OK;
  });
}

}  // namespace emulator
