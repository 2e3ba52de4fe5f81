#include "emulator/snapshot/item_properties_json.h"

#include <algorithm>
#include <limits>

#include "emulator/pim/item_rules.h"
#include "emulator/pim/variant_time.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/snapshot/values.h"
#include "platform/outlook.h"

namespace emulator {
namespace {

constexpr std::size_t kFileAs = contactProperty("FileAs");
constexpr std::size_t kFileAsPut = contactProperty("FileAsPut");

std::u16string readLimitedText(const Property& property, const JsonNode& node) {
  std::u16string text = readText(node);
  if (text.find(u'\0') != std::u16string::npos) node.refuse("has a NUL, where a text ends");
  if (text.size() > property.longest) {
    node.refuse("longer than " + std::to_string(property.longest) + " characters");
  }
  return text;
}

double readDate(const Property& property, const JsonNode& node) {
  const double date = readLocal(node);
  const bool isUnset = date == kNoDate && property.canBeUnset;
  if (!isUnset) requireInCalendar(node, date, property.earliest);
  return date;
}

PropertyValue readValue(const Property& property, const JsonNode& node) {
  switch (property.type) {
    case PropertyType::Text:
      return readLimitedText(property, node);
    case PropertyType::Date:
      return readDate(property, node);
    case PropertyType::Number:
      return static_cast<std::int32_t>(
          node.number(std::numeric_limits<std::int32_t>::min(), property.greatest));
    case PropertyType::Flag:
      break;
  }
  return node.flag();
}

void readProperty(ItemRecord& record, std::size_t place, const JsonNode& node) {
  if (node.isNull()) {
    record.reset(place);
  } else if (record.table().kind == ObjectKind::Appointment && place == kEnd) {
    record.set(place, readLocal(node));  // requireEnd looks at it
  } else {
    record.set(place, readValue(record.property(place), node));
  }
  // A file-as name that somebody gave is not composed any more.
  if (record.table().kind == ObjectKind::Contact && place == kFileAs) record.set(kFileAsPut, !node.isNull());
}

bool isSet(double date) {
  return date != kNoDate;
}

/// Done once it is known whether the appointment lasts all day.
void requireEnd(const JsonNode& given, const ItemRecord& appointment) {
  const double end = appointment.get<double>(kEnd);
  if (!canEndAt(appointment, end)) requireInCalendar(given, end, kFirstPlannedDay);
}

/// `duration` is what the appointment had.
void settleTimes(const JsonNode& object, double duration, ItemRecord& appointment) {
  const auto givenStart = object.member("Start");
  const auto givenEnd = object.member("End");
  if (!givenStart && !givenEnd) return;
  if (givenEnd && !givenEnd->isNull()) requireEnd(*givenEnd, appointment);
  const double start = appointment.get<double>(kStart);
  const double end = appointment.get<double>(kEnd);
  if (!isSet(start) || !isSet(end) || end >= start) return;
  if (givenEnd && givenStart) givenEnd->refuse("is before Start");
  if (givenEnd) {
    appointment.set(kStart, roundToMillisecond(end - duration));
    if (appointment.get<double>(kStart) < kFirstPlannedDay) givenEnd->refuse("takes Start before 1900-01-01");
  } else {
    appointment.set(kEnd, roundToMillisecond(start + duration));
    if (!canEndAt(appointment, appointment.get<double>(kEnd)))
      givenStart->refuse("takes End past 2999-12-31");
  }
}

Json valueToJson(const PropertyValue& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return textToJson(*text);
  if (const auto* date = std::get_if<double>(&value)) return localText(*date);
  if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
  return std::get<bool>(value);
}

void dumpProperty(const ItemRecord& record, std::size_t place, Json& object) {
  const Property& property = record.property(place);
  const bool isMissing = property.type == PropertyType::Date && !isSet(record.get<double>(place));
  if (!property.isInternal && !isMissing)
    object[std::string(property.name)] = valueToJson(record.value(place));
}

}  // namespace

void readProperties(const JsonNode& object, std::span<const std::string_view> others, ItemRecord& record) {
  const bool hasTimes = record.table().kind == ObjectKind::Appointment;
  const double duration = hasTimes ? durationInDays(record) : 0;
  const auto properties = record.table().properties;
  object.forEachMember([&](std::string_view key, const JsonNode& node) {
    const auto property = std::ranges::find(properties, key, &Property::name);
    if (property != properties.end() && !property->isInternal) {
      readProperty(record, static_cast<std::size_t>(property - properties.begin()), node);
    } else if (std::ranges::find(others, key) == others.end()) {
      node.refuse("unknown key");
    }
  });
  if (hasTimes) settleTimes(object, duration, record);
}

void dumpProperties(const ItemRecord& record, Json& object) {
  for (std::size_t place = 0; place < record.size(); ++place) dumpProperty(record, place, object);
}

void dumpDifferences(const ItemRecord& occurrence, const ItemRecord& series, Json& object) {
  for (std::size_t place = 0; place < occurrence.size(); ++place) {
    const bool isOwn = place == kStart || place == kEnd || occurrence.value(place) != series.value(place);
    if (isOwn) dumpProperty(occurrence, place, object);
  }
  const bool missesEnd = !isSet(occurrence.get<double>(kEnd)) && isSet(series.get<double>(kEnd));
  if (missesEnd) object["End"] = nullptr;
}

}  // namespace emulator
