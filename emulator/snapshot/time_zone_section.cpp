// "time_zone": one value as a whole, so what it leaves out is 0. The zone's names are no part of it.
#include <algorithm>
#include <array>
#include <string_view>

#include "emulator/pim/calendar_day.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/section_handlers.h"

namespace emulator {
namespace {

/// A number of a structure, with its limits. A rare one is dumped only when it is not 0.
template <typename Structure, typename Number>
struct NumberField {
  std::string_view key;
  Number Structure::*member;
  int low;
  int high;
  bool isRare = false;
};

constexpr int kLastYear = 30827;  ///< of the platform's calendar

constexpr std::array kDateFields{
    NumberField<SYSTEMTIME, WORD>{"Year", &SYSTEMTIME::wYear, 0, kLastYear},
    NumberField<SYSTEMTIME, WORD>{"Month", &SYSTEMTIME::wMonth, 0, kMonthsPerYear},
    NumberField<SYSTEMTIME, WORD>{"DayOfWeek", &SYSTEMTIME::wDayOfWeek, 0, 6},
    NumberField<SYSTEMTIME, WORD>{"Day", &SYSTEMTIME::wDay, 0, kLongestMonth},
    NumberField<SYSTEMTIME, WORD>{"Hour", &SYSTEMTIME::wHour, 0, 23},
    NumberField<SYSTEMTIME, WORD>{"Minute", &SYSTEMTIME::wMinute, 0, 59},
    NumberField<SYSTEMTIME, WORD>{"Second", &SYSTEMTIME::wSecond, 0, 59, true},
    NumberField<SYSTEMTIME, WORD>{"Milliseconds", &SYSTEMTIME::wMilliseconds, 0, 999, true},
};

constexpr std::array kBiasFields{
    NumberField<TIME_ZONE_INFORMATION, LONG>{"Bias", &TIME_ZONE_INFORMATION::Bias, -kMinutesPerDay,
                                             kMinutesPerDay},
    NumberField<TIME_ZONE_INFORMATION, LONG>{"StandardBias", &TIME_ZONE_INFORMATION::StandardBias,
                                             -kMinutesPerDay, kMinutesPerDay},
    NumberField<TIME_ZONE_INFORMATION, LONG>{"DaylightBias", &TIME_ZONE_INFORMATION::DaylightBias,
                                             -kMinutesPerDay, kMinutesPerDay},
};

/// Whether the key is one of the table's.
template <typename Structure, typename Number, std::size_t size>
bool readNumber(const std::array<NumberField<Structure, Number>, size>& fields, Structure& structure,
                std::string_view key, const JsonNode& node) {
  const auto field = std::ranges::find(fields, key, &NumberField<Structure, Number>::key);
  if (field == fields.end()) return false;
  structure.*field->member =
      node.isNull() ? Number{0} : static_cast<Number>(node.number(field->low, field->high));
  return true;
}

template <typename Structure, typename Number, std::size_t size>
Json dumpNumbers(const std::array<NumberField<Structure, Number>, size>& fields, const Structure& structure) {
  Json object = Json::object();
  for (const auto& field : fields) {
    const Number number = structure.*field.member;
    if (!field.isRare || number != 0) object[std::string(field.key)] = number;
  }
  return object;
}

/// The year by which a rule that holds every year is judged.
constexpr int kAnyYear = 2000;

bool namesNoDay(const SYSTEMTIME& date) {
  return !transitionIn(date.wYear != 0 ? date.wYear : kAnyYear, date);
}

SYSTEMTIME readTransition(const JsonNode& node) {
  SYSTEMTIME date{};
  if (node.isNull()) return date;
  node.forEachMember([&date](std::string_view key, const JsonNode& number) {
    if (!readNumber(kDateFields, date, key, number)) number.refuse("unknown key");
  });
  if (date.wMonth != 0 && namesNoDay(date)) node.refuse("no such day");
  return date;
}

void readStandardDate(TIME_ZONE_INFORMATION& zone, const JsonNode& node) {
  zone.StandardDate = readTransition(node);
}
void readDaylightDate(TIME_ZONE_INFORMATION& zone, const JsonNode& node) {
  zone.DaylightDate = readTransition(node);
}

constexpr std::array kDates{
    Field<TIME_ZONE_INFORMATION>{"StandardDate", readStandardDate},
    Field<TIME_ZONE_INFORMATION>{"DaylightDate", readDaylightDate},
};

}  // namespace

void loadTimeZone(Device& device, const JsonNode& node) {
  TIME_ZONE_INFORMATION zone{};
  if (node.isNull()) return device.configuration.setTimeZone(utcZone());
  node.forEachMember([&zone](std::string_view key, const JsonNode& value) {
    if (readNumber(kBiasFields, zone, key, value)) return;
    readField<TIME_ZONE_INFORMATION>(kDates, key, zone, value);
  });
  if ((zone.StandardDate.wMonth == 0) != (zone.DaylightDate.wMonth == 0)) {
    node.refuse("StandardDate and DaylightDate go together");
  }
  device.configuration.setTimeZone(zone);
}

Json dumpTimeZone(Device& device) {
  const TIME_ZONE_INFORMATION zone = device.configuration.timeZone().information();
  Json object = dumpNumbers(kBiasFields, zone);
  object["StandardDate"] = dumpNumbers(kDateFields, zone.StandardDate);
  object["DaylightDate"] = dumpNumbers(kDateFields, zone.DaylightDate);
  return object;
}

}  // namespace emulator
