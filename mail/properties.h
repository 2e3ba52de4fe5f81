// Asks messaging objects for properties, and opens the objects that they hand out.
#pragma once

#include <algorithm>
#include <span>

#include "mail/messaging_memory.h"
#include "platform/errors.h"
#include "service/com_ptr.h"

namespace qorv {

/// Laid out as an SPropTagArray that has room for its tags.
template <std::size_t kCapacity>
struct TagArray {
  ULONG count = kCapacity;
  ULONG tags[kCapacity];

  SPropTagArray* get() { return reinterpret_cast<SPropTagArray*>(this); }
};

/// The value of a property among others, or null; a property that could not be had comes under another tag.
inline const SPropValue* findValue(std::span<const SPropValue> values, ULONG tag) {
  const auto value = std::ranges::find(values, tag, &SPropValue::ulPropTag);
  return value == values.end() ? nullptr : &*value;
}

inline std::span<const SPropValue> valuesOf(const SRow& row) {
  return row.lpProps ? std::span<const SPropValue>(row.lpProps, row.cValues) : std::span<const SPropValue>();
}

/// A property's text, or null.
inline LPCWSTR textOf(const SPropValue* value) {
  return value ? value->Value.lpszW : nullptr;
}

/// What one GetProps gave.
class PropertyValues {
 public:
  PropertyValues(IMAPIProp& object, SPropTagArray* tags)
      : result_(object.GetProps(tags, MAPI_UNICODE, &count_, values_.put())) {}
  template <std::size_t kCapacity>
  PropertyValues(IMAPIProp& object, TagArray<kCapacity>&& tags) : PropertyValues(object, tags.get()) {}

  [[nodiscard]] HRESULT result() const { return result_; }
  /// None when the call failed.
  [[nodiscard]] std::span<const SPropValue> all() const {
    return SUCCEEDED(result_) && values_ ? std::span<const SPropValue>(values_.get(), count_)
                                         : std::span<const SPropValue>();
  }
  [[nodiscard]] const SPropValue* find(ULONG tag) const { return findValue(all(), tag); }
  [[nodiscard]] const SBinary* findBinary(ULONG tag) const {
    const SPropValue* value = find(tag);
    return value ? &value->Value.bin : nullptr;
  }

 private:
  ULONG count_ = 0;
  MapiBuffer<SPropValue> values_;
  HRESULT result_;
};

/// An opened object with what the call answered.
template <typename Interface>
struct Opened {
  HRESULT result = E_FAIL;
  ComPtr<Interface> object;  ///< empty when the call failed
};

/// Opens what an identifier names, in a store or a folder. What comes back is taken for the interface, as
/// most of these objects can't be asked for one.
template <typename Interface, typename Container>
Opened<Interface> openEntry(Container& container, const SBinary& entryId, ULONG flags) {
  IUnknown* object = nullptr;
  ULONG type = 0;
  const HRESULT result = container.OpenEntry(entryId.cb, entryId.lpb, nullptr, flags, &type, &object);
  return {result, ComPtr<Interface>(SUCCEEDED(result) ? static_cast<Interface*>(object) : nullptr)};
}

/// Empty when the property can't be opened.
inline ComPtr<IStream> openStream(IMAPIProp& object, ULONG tag, ULONG flags) {
  IUnknown* stream = nullptr;
  const HRESULT result = object.OpenProperty(tag, nullptr, 0, flags, &stream);
  return ComPtr<IStream>(SUCCEEDED(result) ? static_cast<IStream*>(stream) : nullptr);
}

}  // namespace qorv
