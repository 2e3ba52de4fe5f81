// The values of one item's properties, as a plain value.
#pragma once

#include <bitset>
#include <vector>

#include "emulator/pim/item_table.h"

namespace emulator {

/// Knows which values were set since it was made or loaded. Places count as in the table's properties.
class ItemRecord {
 public:
  static constexpr std::size_t kMostProperties = 64;

  /// Every property with its initial value.
  explicit ItemRecord(const ItemTable& table);

  [[nodiscard]] const ItemTable& table() const { return *table_; }
  [[nodiscard]] const Property& property(std::size_t place) const { return table_->properties[place]; }
  [[nodiscard]] std::size_t size() const { return values_.size(); }
  [[nodiscard]] std::span<const PropertyValue> values() const { return values_; }

  [[nodiscard]] const PropertyValue& value(std::size_t place) const { return values_[place]; }
  /// T is the alternative of the property's type.
  template <typename T>
  [[nodiscard]] const T& get(std::size_t place) const {
    return std::get<T>(values_[place]);
  }

  /// The value must be of the property's type. No rule is applied.
  void set(std::size_t place, PropertyValue value);
  /// Back to the initial value.
  void reset(std::size_t place);

  [[nodiscard]] bool isChanged(std::size_t place) const { return changed_[place]; }
  void forgetChanges() { changed_.reset(); }
  /// Takes over what was changed in another record of the same table.
  void takeChanges(const ItemRecord& other);

 private:
  const ItemTable* table_;
  std::vector<PropertyValue> values_;
  std::bitset<kMostProperties> changed_;
};

/// What a property has when nobody gave it a value.
PropertyValue initialValue(const Property& property);

}  // namespace emulator
