#include "emulator/pim/item_core.h"

#include "emulator/pim/com_object.h"

namespace emulator {

PimItem* ItemCore::item() {
  if (!item_) item_ = source_->load();
  return item_ ? &*item_ : nullptr;
}

template <typename Value, typename Out>
HRESULT ItemCore::read(std::size_t place, Out* out) {
  if (out == nullptr) return E_POINTER;
  return atBoundary([&] {
    const PimItem* held = item();
    if (held == nullptr) return E_FAIL;
    *out = static_cast<Out>(held->properties.get<Value>(place));
    return S_OK;
  });
}

HRESULT ItemCore::get(std::size_t place, BSTR* text) {
  if (text == nullptr) return E_POINTER;
  *text = nullptr;
  return atBoundary([&] {
    const PimItem* held = item();
    if (held == nullptr) return E_FAIL;
    *text = context_.memory.allocateText(held->properties.get<std::u16string>(place));
    return *text != nullptr ? S_OK : E_OUTOFMEMORY;
  });
}

HRESULT ItemCore::get(std::size_t place, DATE* date) {
  return read<double>(place, date);
}

HRESULT ItemCore::get(std::size_t place, LONG* number) {
  return read<std::int32_t>(place, number);
}

HRESULT ItemCore::get(std::size_t place, VARIANT_BOOL* flag) {
  const HRESULT result = read<bool>(place, flag);
  if (SUCCEEDED(result) && *flag != VARIANT_FALSE) *flag = VARIANT_TRUE;
  return result;
}

HRESULT ItemCore::write(std::size_t place, PropertyValue value) {
  return atBoundary([&] {
    PimItem* held = item();
    return held == nullptr ? E_FAIL : context_.items.put(held->properties, place, std::move(value));
  });
}

HRESULT ItemCore::put(std::size_t place, BSTR text) {
  return atBoundary([&] { return write(place, text == nullptr ? std::u16string() : std::u16string(text)); });
}

HRESULT ItemCore::put(std::size_t place, DATE date) {
  return write(place, static_cast<double>(date));
}

HRESULT ItemCore::put(std::size_t place, LONG number) {
  return write(place, number);
}

HRESULT ItemCore::put(std::size_t place, VARIANT_BOOL flag) {
  return write(place, flag != VARIANT_FALSE);
}

HRESULT ItemCore::getRecurring(VARIANT_BOOL* recurring) {
  if (recurring == nullptr) return E_POINTER;
  return atBoundary([&] {
    const PimItem* held = item();
    if (held == nullptr) return E_FAIL;
    *recurring = held->rule ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  });
}

HRESULT ItemCore::clearRecurrence() {
  return atBoundary([&] {
    PimItem* held = item();
    if (held == nullptr) return E_FAIL;
    if (!held->rule) return S_OK;
    held->rule.reset();
    held->ruleChanged = true;
    held->exceptionsDropped = true;
    return S_OK;
  });
}

HRESULT ItemCore::getOid(LONG* oid) const {
  if (oid == nullptr) return E_POINTER;
  *oid = static_cast<LONG>(source_->oid());
  return S_OK;
}

HRESULT ItemCore::save() {
  return atBoundary([&] {
    PimItem* held = item();
    return held == nullptr ? E_FAIL : source_->save(*held);
  });
}

HRESULT ItemCore::remove() {
  return atBoundary([&] { return source_->remove(); });
}

}  // namespace emulator
