#include "emulator/pim/item_rules.h"

#include <algorithm>

#include "emulator/pim/variant_time.h"
#include "platform/outlook.h"

namespace emulator {
namespace {

constexpr std::size_t kReminderSet = appointmentProperty("ReminderSet");
constexpr std::size_t kReminderMinutes = appointmentProperty("ReminderMinutesBeforeStart");
constexpr std::size_t kFileAs = contactProperty("FileAs");
constexpr std::size_t kFileAsPut = contactProperty("FileAsPut");
constexpr std::size_t kComplete = taskProperty("Complete");
constexpr std::size_t kDateCompleted = taskProperty("DateCompleted");

bool isSet(double date) {
  return date != kNoDate;
}

HRESULT checkText(const Property& property, const std::u16string& text) {
  return text.size() > property.longest ? E_FIELDTOOLARGE : S_OK;
}

bool isAppointmentTime(const ItemRecord& record, std::size_t place) {
  return record.table().kind == ObjectKind::Appointment && (place == kStart || place == kEnd);
}

HRESULT checkDate(const ItemRecord& record, std::size_t place, double date) {
  const Property& property = record.property(place);
  if (!isSet(date)) return property.canBeUnset ? S_OK : E_INVALIDARG;
  const bool isEnd = isAppointmentTime(record, place) && place == kEnd;
  const bool isInRange = isEnd ? canEndAt(record, date) : isInCalendar(date, property.earliest);
  return isInRange ? S_OK : E_INVALIDARG;
}

HRESULT check(const ItemRecord& record, std::size_t place, const PropertyValue& value) {
  const Property& property = record.property(place);
  if (const auto* text = std::get_if<std::u16string>(&value)) return checkText(property, *text);
  if (const auto* date = std::get_if<double>(&value)) return checkDate(record, place, *date);
  if (const auto* number = std::get_if<std::int32_t>(&value)) {
    return *number > property.greatest ? E_INVALIDARG : S_OK;
  }
  return S_OK;
}

// The one of an appointment's times that a put of the other takes along.
struct MovedTime {
  std::size_t place;
  double date;
};

std::optional<MovedTime> movedAlong(const ItemRecord& appointment, std::size_t place, double date) {
  const double start = appointment.get<double>(kStart);
  const double duration = durationInDays(appointment);
  if (place == kStart && isSet(appointment.get<double>(kEnd))) {
    return MovedTime{kEnd, roundToMillisecond(date + duration)};
  }
  if (place == kEnd && isSet(start) && date < start) {
    return MovedTime{kStart, roundToMillisecond(date - duration)};
  }
  return std::nullopt;
}

HRESULT moveAlong(ItemRecord& appointment, std::size_t place, double date) {
  const std::optional<MovedTime> moved = movedAlong(appointment, place, date);
  if (!moved) return S_OK;
  const HRESULT result = checkDate(appointment, moved->place, moved->date);
  if (SUCCEEDED(result)) appointment.set(moved->place, moved->date);
  return result;
}

// What else a put changes, before the value itself is put.
HRESULT applyPut(ItemRecord& record, std::size_t place, const PropertyValue& value, const LocalClock& clock) {
  const ObjectKind kind = record.table().kind;
  if (isAppointmentTime(record, place)) return moveAlong(record, place, std::get<double>(value));
  if (kind == ObjectKind::Contact && place == kFileAs) record.set(kFileAsPut, true);
  if (kind == ObjectKind::Task && place == kComplete && value != record.value(place)) {
    record.set(kDateCompleted, std::get<bool>(value) ? static_cast<double>(dayAt(clock())) : kNoDate);
  }
  return S_OK;
}

void spanWholeDays(ItemRecord& appointment) {
  const double start = appointment.get<double>(kStart);
  const double end = appointment.get<double>(kEnd);
  if (!isSet(start)) return;
  const double firstMidnight = dayAt(start);
  appointment.set(kStart, firstMidnight);
  appointment.set(kEnd, std::max(isSet(end) ? nextMidnight(end) : firstMidnight, firstMidnight + 1));
}

HRESULT prepareAppointment(ItemRecord& appointment) {
  if (appointment.get<bool>(kAllDayEvent)) spanWholeDays(appointment);
  const double end = appointment.get<double>(kEnd);
  if (isSet(end) && !canEndAt(appointment, end)) return E_INVALIDDATES;
  const double start = appointment.get<double>(kStart);
  if (!appointment.get<bool>(kReminderSet) || !isSet(start)) return S_OK;
  const double reminder =
      roundToMillisecond(start - appointment.get<std::int32_t>(kReminderMinutes) * kMinute);
  return reminder < kFirstPlannedDay ? E_INVALIDREMINDERTIME : S_OK;
}

std::u16string composeFileAs(const ItemRecord& contact) {
  const auto text = [&](std::size_t place) -> const std::u16string& {
    return contact.get<std::u16string>(place);
  };
  const std::u16string& last = text(contactProperty("LastName"));
  const std::u16string& first = text(contactProperty("FirstName"));
  if (!last.empty() && !first.empty()) return last + u", " + first;
  if (!last.empty() || !first.empty()) return last + first;
  for (const std::size_t place : {contactProperty("CompanyName"), contactProperty("Email1Address"),
                                  contactProperty("Email2Address"), contactProperty("Email3Address")}) {
    if (!text(place).empty()) return text(place);
  }
  return {};
}

}  // namespace

PimItem newItem(ObjectKind kind, const LocalClock& clock) {
  PimItem item(kind);
  if (kind == ObjectKind::Appointment) {
    const double start = nextFullHour(clock());
    item.properties.set(kStart, start);
    item.properties.set(kEnd, roundToMillisecond(start + kHour));
  }
  return item;
}

double durationInDays(const ItemRecord& appointment) {
  const double start = appointment.get<double>(kStart);
  const double end = appointment.get<double>(kEnd);
  return isSet(start) && isSet(end) ? end - start : 0.0;
}

bool canEndAt(const ItemRecord& appointment, double end) {
  const bool closesLastDay = appointment.get<bool>(kAllDayEvent) && roundToMillisecond(end) == kLastDay + 1;
  return closesLastDay || isInCalendar(end, appointment.property(kEnd).earliest);
}

HRESULT putProperty(ItemRecord& record, std::size_t place, PropertyValue value, const LocalClock& clock) {
  HRESULT result = check(record, place, value);
  if (SUCCEEDED(result)) result = applyPut(record, place, value, clock);
  if (FAILED(result)) return result;
  record.set(place, std::move(value));
  return S_OK;
}

HRESULT prepareForSave(ItemRecord& record) {
  const ObjectKind kind = record.table().kind;
  if (kind == ObjectKind::Appointment) return prepareAppointment(record);
  if (kind == ObjectKind::Contact && !record.get<bool>(kFileAsPut))
    record.set(kFileAs, composeFileAs(record));
  return S_OK;
}

HRESULT prepareForSave(PimItem& item) {
  const bool isSeries = item.kind() == ObjectKind::Appointment && item.rule;
  if (isSeries && !isSet(item.properties.get<double>(kStart))) return E_INVALIDDATES;
  return prepareForSave(item.properties);
}

}  // namespace emulator
