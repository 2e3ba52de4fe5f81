#include "emulator/pim/item_record.h"

#include "platform/outlook.h"

namespace emulator {

static_assert(kContactProperties.size() <= ItemRecord::kMostProperties);
static_assert(kAppointmentProperties.size() <= ItemRecord::kMostProperties);
static_assert(kTaskProperties.size() <= ItemRecord::kMostProperties);

PropertyValue initialValue(const Property& property) {
  switch (property.type) {
    case PropertyType::Text:
      return std::u16string();
    case PropertyType::Date:
      return kNoDate;
    case PropertyType::Number:
      return property.initial;
    case PropertyType::Flag:
      break;
  }
  return property.initial != 0;
}

ItemRecord::ItemRecord(const ItemTable& table) : table_(&table) {
  values_.reserve(table.properties.size());
  for (const Property& property : table.properties) values_.push_back(initialValue(property));
}

void ItemRecord::set(std::size_t place, PropertyValue value) {
  values_[place] = std::move(value);
  changed_.set(place);
}

void ItemRecord::reset(std::size_t place) {
  set(place, initialValue(property(place)));
}

void ItemRecord::takeChanges(const ItemRecord& other) {
  for (std::size_t place = 0; place < values_.size(); ++place) {
    if (other.isChanged(place)) set(place, other.value(place));
  }
}

}  // namespace emulator
