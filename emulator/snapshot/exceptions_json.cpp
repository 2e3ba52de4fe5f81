#include "emulator/snapshot/exceptions_json.h"

#include <algorithm>
#include <array>
#include <set>

#include "emulator/pim/occurrence.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/item_properties_json.h"
#include "emulator/snapshot/item_refusal.h"
#include "emulator/snapshot/recurrence_json.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/snapshot/values.h"
#include "platform/outlook.h"

namespace emulator {
namespace {

constexpr const char* kOriginalKey = "OriginalDate";
constexpr const char* kDeletedKey = "Deleted";
constexpr const char* kAppointmentKey = "Appointment";

struct Reading {
  Day originalDay = 0;
  bool isDeleted = false;
  std::optional<JsonNode> appointment;
};

constexpr std::array kFields{
    Field<Reading>{kOriginalKey, [](Reading& to, const JsonNode& node) { to.originalDay = readDay(node); }},
    Field<Reading>{kDeletedKey,
                   [](Reading& to, const JsonNode& node) { to.isDeleted = !node.isNull() && node.flag(); }},
    Field<Reading>{kAppointmentKey,
                   [](Reading& to, const JsonNode& node) {
                     if (!node.isNull()) to.appointment = node;
                   }},
};

SeriesException readException(const PimItem& series, const JsonNode& node) {
  Reading reading;
  requireMember(node, kOriginalKey);
  readFields<Reading>(node, kFields, reading);
  SeriesException exception{reading.originalDay, std::nullopt};
  if (reading.isDeleted) {
    if (reading.appointment) reading.appointment->refuse("the occurrence is deleted");
    return exception;
  }
  exception.appointment = plainOccurrence(series, reading.originalDay);
  if (reading.appointment) readProperties(*reading.appointment, {}, *exception.appointment);
  if (exception.appointment->get<double>(kStart) == kNoDate) node.refuse("an occurrence has a Start");
  if (const HRESULT result = prepareForSave(*exception.appointment); FAILED(result)) refuseItem(node, result);
  return exception;
}

/// An exception and where it stands in the snapshot.
struct Entry {
  SeriesException exception;
  JsonNode node;
};

std::vector<Entry> readEntries(const PimItem& series, const JsonNode& list) {
  std::vector<Entry> entries;
  std::set<Day> days;
  list.forEachElement([&](const JsonNode& node) {
    if (!series.rule) list.refuse("the appointment is no series");
    entries.push_back({readException(series, node), node});
    if (!days.insert(entries.back().exception.originalDay).second) {
      requireMember(node, kOriginalKey).refuse("day of another exception as well");
    }
  });
  return entries;
}

Json exceptionToJson(const PimItem& series, const SeriesException& exception) {
  Json object = Json::object(
      {{kOriginalKey, localText(exception.originalDay)}, {kDeletedKey, !exception.appointment.has_value()}});
  if (!exception.appointment) return object;
  Json& appointment = object[kAppointmentKey] = Json::object();
  dumpDifferences(*exception.appointment, series.properties, appointment);
  return object;
}

}  // namespace

void loadExceptions(PimItems& items, const PimItem& series, const JsonNode& list) {
  const std::vector<Entry> entries = list.isNull() ? std::vector<Entry>() : readEntries(series, list);
  SeriesExceptions exceptions;
  for (const Entry& entry : entries) exceptions.push_back(entry.exception);
  std::ranges::sort(exceptions, {}, &SeriesException::originalDay);
  for (const Entry& entry : entries) {
    const HRESULT result = checkStanding(series, exceptions, entry.exception);
    if (FAILED(result)) refuseItem(entry.node, result);
  }
  const HRESULT result = items.replaceExceptions(series, std::move(exceptions));
  if (FAILED(result)) refuseItem(list, result);
}

Json exceptionsToJson(const PimItem& series, const SeriesExceptions& exceptions) {
  Json list = Json::array();
  for (const SeriesException& exception : exceptions) list.push_back(exceptionToJson(series, exception));
  return list;
}

}  // namespace emulator
