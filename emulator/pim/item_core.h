// What the three kinds of item objects have in common: values that are loaded when they are first asked for
// and held until Save, and the ways in which a caller reads and puts them.
#pragma once

#include <memory>

#include "emulator/pim/item_source.h"
#include "emulator/pim/model_context.h"
#include "platform/property_database.h"

namespace emulator {

/// The results are those of the platform's methods: E_POINTER for a null out-pointer, E_FAIL when the item is
/// gone.
class ItemCore {
 public:
  ItemCore(ModelContext& context, ObjectKind kind, std::unique_ptr<ItemSource> source)
      : context_(context), kind_(kind), source_(std::move(source)) {}

  ModelContext& context() const { return context_; }
  ObjectKind kind() const { return kind_; }
  Oid oid() const { return source_->oid(); }
  /// The values as this object holds them; null when the item is gone. Throws StoreError.
  PimItem* item();

  HRESULT get(std::size_t place, BSTR* text);
  HRESULT get(std::size_t place, DATE* date);
  HRESULT get(std::size_t place, LONG* number);
  HRESULT get(std::size_t place, VARIANT_BOOL* flag);
  /// The text ends with its NUL; null is the empty text.
  HRESULT put(std::size_t place, BSTR text);
  HRESULT put(std::size_t place, DATE date);
  HRESULT put(std::size_t place, LONG number);
  /// Any non-zero value is true.
  HRESULT put(std::size_t place, VARIANT_BOOL flag);

  HRESULT getRecurring(VARIANT_BOOL* recurring);
  HRESULT clearRecurrence();
  HRESULT getOid(LONG* oid) const;
  HRESULT save();
  HRESULT remove();

 private:
  template <typename Value, typename Out>
  HRESULT read(std::size_t place, Out* out);
  HRESULT write(std::size_t place, PropertyValue value);

  ModelContext& context_;
  ObjectKind kind_;
  std::unique_ptr<ItemSource> source_;
  std::optional<PimItem> item_;
};

}  // namespace emulator
