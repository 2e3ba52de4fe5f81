// Values of properties, and how a thing's properties are found by their tags.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "emulator/store/sqlite.h"
#include "emulator/system/file_time.h"
#include "platform/errors.h"
#include "platform/messaging_types.h"

namespace emulator {

/// Why there is no value where one was asked for.
struct MissingValue {
  SCODE reason;
};

using MailValue = std::variant<MissingValue, LONG, std::u16string, Ticks, Bytes>;

/// A thing has no such property.
inline MailValue noValue() {
  return MissingValue{MAPI_E_NOT_FOUND};
}
/// It has one that only a stream hands out: to the platform, a value too long to be given at once.
inline MailValue streamOnly() {
  return MissingValue{MAPI_E_NOT_ENOUGH_MEMORY};
}

constexpr ULONG propertyNumber(PropertyTag tag) {
  return tag >> 16;
}
constexpr ULONG propertyType(PropertyTag tag) {
  return tag & 0xFFFF;
}
constexpr PropertyTag propertyTag(ULONG number, ULONG type) {
  return number << 16 | type;
}

/// More tags or names than any object has: an array that claims more is none.
inline constexpr std::size_t kMostTags = 0x8000;

/// Whether a tag asks for a property: PT_UNSPECIFIED asks for any type.
constexpr bool asksFor(PropertyTag asked, PropertyTag property) {
  return asked == property || asked == propertyTag(propertyNumber(property), PT_UNSPECIFIED);
}

/// A thing's value for a tag that was asked for.
using PropertyLookup = std::function<MailValue(PropertyTag)>;

/// What can be asked of a thing.
struct Properties {
  std::vector<PropertyTag> tags;
  PropertyLookup lookup;
};

/// A property of a kind of things and how it is read: things describe themselves by tables of these.
template <typename Thing>
struct ReadableProperty {
  PropertyTag tag;
  MailValue (*read)(const Thing& thing);
};

template <typename Thing>
MailValue readProperty(std::span<const ReadableProperty<Thing>> properties, const Thing& thing,
                       PropertyTag asked) {
  for (const ReadableProperty<Thing>& property : properties) {
    if (asksFor(asked, property.tag)) return property.read(thing);
  }
  return noValue();
}

template <typename Thing>
std::vector<PropertyTag> tagsOf(std::span<const ReadableProperty<Thing>> properties) {
  std::vector<PropertyTag> tags;
  for (const ReadableProperty<Thing>& property : properties) tags.push_back(property.tag);
  return tags;
}

/// The tag that a value bears in the answer: the type is the value's, PT_ERROR for one that is missing.
PropertyTag answeredTag(PropertyTag asked, const MailValue& value);

}  // namespace emulator
