#include "desktop/icalendar_zone.h"

#include <chrono>
#include <utility>

#include "desktop/item_refused.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

bool saysOffsets(icalcomponent& definition) {
  for (const icalcomponent_kind kind : {ICAL_XSTANDARD_COMPONENT, ICAL_XDAYLIGHT_COMPONENT}) {
    icalcomponent* rule = icalcomponent_get_first_component(&definition, kind);
    if (rule != nullptr && icalcomponent_get_first_property(rule, ICAL_TZOFFSETTO_PROPERTY) != nullptr)
      return true;
  }
  return false;
}

/// Programs prefix the well-known names: "/example.org/20070129_1/Europe/Berlin" is known by its end.
icaltimezone* findKnownZone(const std::string& name) {
  const auto known = [&name](std::size_t from) {
    return icaltimezone_get_builtin_timezone(name.substr(from).c_str());
  };
  if (!name.starts_with('/')) return known(0);
  for (std::size_t slash = 0; slash != std::string::npos; slash = name.find('/', slash + 1)) {
    if (icaltimezone* zone = known(slash + 1)) return zone;
  }
  return nullptr;
}

bool isReal(const icaltimetype& time) {
  const icaltimetype normal = icaltime_normalize(time);
  return !icaltime_is_null_time(time) && normal.year == time.year && normal.month == time.month &&
         normal.day == time.day && normal.hour == time.hour && normal.minute == time.minute &&
         normal.second == time.second;
}

LocalTime fieldsOf(const icaltimetype& time) {
  LocalTime result;
  result.year = static_cast<std::uint16_t>(time.year);
  result.month = static_cast<std::uint16_t>(time.month);
  result.day = static_cast<std::uint16_t>(time.day);
  result.hour = static_cast<std::uint16_t>(time.hour);
  result.minute = static_cast<std::uint16_t>(time.minute);
  result.second = static_cast<std::uint16_t>(time.second);
  return result;
}

std::chrono::sys_seconds asSeconds(const LocalTime& time) {
  return dayOf(time) + std::chrono::hours(time.hour) + std::chrono::minutes(time.minute) +
         std::chrono::seconds(time.second);
}

}  // namespace

void ZoneTable::add(ComponentHandle definition) {
  if (!definition || !saysOffsets(*definition)) return;
  icalproperty* tzid = icalcomponent_get_first_property(definition.get(), ICAL_TZID_PROPERTY);
  if (tzid == nullptr) return;
  const std::string name = copyText(icalproperty_get_tzid(tzid));
  ZoneHandle zone(icaltimezone_new());
  if (icaltimezone_set_component(zone.get(), definition.get()) == 0) return;
  [[maybe_unused]] const icalcomponent* ownedByZone = definition.release();
  zones_.emplace(name, std::move(zone));
}

const icaltimezone* ZoneTable::find(const std::string& name) const {
  if (const auto own = zones_.find(name); own != zones_.end()) return own->second.get();
  return findKnownZone(name);
}

icaltimetype ZoneTable::timeOf(icalproperty& property) const {
  const icalvalue* value = icalproperty_get_value(&property);
  icaltimetype time =
      icalvalue_isa(value) == ICAL_DATE_VALUE ? icalvalue_get_date(value) : icalvalue_get_datetime(value);
  const std::string name = copyText(icalproperty_get_property_name(&property));
  if (!isReal(time)) throw ItemRefused(name + " is no real time");
  icalparameter* tzid = icalproperty_get_first_parameter(&property, ICAL_TZID_PARAMETER);
  if (tzid == nullptr || time.is_date || icaltime_is_utc(time)) return time;
  const std::string zoneName = copyText(icalparameter_get_tzid(tzid));
  if (zoneName.empty()) return time;
  const icaltimezone* zone = find(zoneName);
  if (zone == nullptr) throw ItemRefused("time zone \"" + zoneName + "\" is not known");
  icaltime_set_timezone(&time, zone);
  return time;
}

LocalTime localOf(const icaltimetype& time) {
  const bool zoned = !time.is_date && time.zone != nullptr;
  const LocalTime local =
      zoned ? clockAt(icaltime_as_timet_with_zone(time, icaltime_get_timezone(time))) : fieldsOf(time);
  if (local.year < kFirstYear || local.year > kLastYear) {
    throw ItemRefused("the year " + std::to_string(local.year) + " is outside the device's calendar (" +
                      std::to_string(kFirstYear) + " to " + std::to_string(kLastYear) + ")");
  }
  return local;
}

icaltimetype inZoneOf(icaltimetype time, const icaltimetype& other) {
  if (!time.is_date) icaltime_set_timezone(&time, other.zone);
  return time;
}

icaltimetype floating(icaltimetype time) {
  icaltime_set_timezone(&time, nullptr);
  return time;
}

icaltimetype floatingOf(const LocalTime& time) {
  icaltimetype result = icaltime_null_time();
  result.year = time.year;
  result.month = time.month;
  result.day = time.day;
  result.hour = time.hour;
  result.minute = time.minute;
  result.second = time.second;
  return result;
}

icaltimetype dateOf(const LocalTime& time) {
  icaltimetype result = icaltime_null_time();
  result.is_date = 1;
  result.year = time.year;
  result.month = time.month;
  result.day = time.day;
  return result;
}

bool clockShows(const LocalTime& time) {
  return clockAt(instantOf(time)) == time;
}

std::int64_t secondsBetween(const LocalTime& from, const LocalTime& to) {
  return (asSeconds(to) - asSeconds(from)).count();
}

LocalTime addSeconds(const LocalTime& time, std::int64_t seconds) {
  const std::chrono::sys_seconds moved = asSeconds(time) + std::chrono::seconds(seconds);
  const auto day = std::chrono::floor<std::chrono::days>(moved);
  const std::int64_t rest = (moved - day).count();
  LocalTime result = midnightOf(day);
  result.hour = static_cast<std::uint16_t>(rest / 3600);
  result.minute = static_cast<std::uint16_t>(rest / 60 % 60);
  result.second = static_cast<std::uint16_t>(rest % 60);
  return result;
}

std::string spellZone(const icaltimetype& time) {
  if (time.zone == nullptr) return "no zone";
  auto* zone = const_cast<icaltimezone*>(time.zone);
  const std::string location = copyText(icaltimezone_get_location(zone));
  return location.empty() ? copyText(icaltimezone_get_tzid(zone)) : location;
}

}  // namespace desktop
