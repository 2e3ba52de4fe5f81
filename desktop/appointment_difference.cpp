#include "desktop/appointment_difference.h"

#include <algorithm>

#include "desktop/appointment_fields.h"
#include "desktop/local_time.h"

namespace desktop {

namespace {

/// One exception on both sides, each with its series.
struct ExceptionPair {
  const Appointment& sentSeries;
  const AppointmentException& sent;
  const Appointment& deviceSeries;
  const AppointmentException& device;
};

template <typename Value>
void compareOwn(Differences& out, const std::string& property, const ExceptionPair& pair,
                std::optional<Value> AppointmentException::*own, Value Appointment::*inherited) {
  const std::optional<Value>& sent = pair.sent.*own;
  const std::optional<Value>& device = pair.device.*own;
  if (!sent && !device) return;
  compareValue(out, property, sent.value_or(pair.sentSeries.*inherited),
               device.value_or(pair.deviceSeries.*inherited));
}

void compareExceptions(Differences& out, const std::string& name, const ExceptionPair& pair) {
  if (pair.sent.deleted || pair.device.deleted) {
    const auto spelled = [](bool deleted) { return deleted ? "deleted" : "changed"; };
    if (pair.sent.deleted != pair.device.deleted) {
      out.push_back({name, spelled(pair.sent.deleted), spelled(pair.device.deleted)});
    }
    return;
  }
  using Exception = AppointmentException;
  compareValue(out, name + ": start", pair.sent.start, pair.device.start);
  compareValue(out, name + ": end", pair.sent.end, pair.device.end);
  compareOwn(out, name + ": reminder", pair, &Exception::reminderSet, &Appointment::reminderSet);
  compareOwn(out, name + ": reminder minutes", pair, &Exception::reminderMinutes,
             &Appointment::reminderMinutes);
  compareOwn(out, name + ": busy status", pair, &Exception::busyStatus, &Appointment::busyStatus);
  compareOwn(out, name + ": subject", pair, &Exception::subject, &Appointment::subject);
  compareOwn(out, name + ": location", pair, &Exception::location, &Appointment::location);
  compareOwn(out, name + ": body", pair, &Exception::body, &Appointment::body);
}

const AppointmentException* findDay(const Appointment& series, const LocalTime& day) {
  const auto found = std::find_if(
      series.exceptions.begin(), series.exceptions.end(),
      [&](const AppointmentException& exception) { return dayOf(exception.originalDate) == dayOf(day); });
  return found == series.exceptions.end() ? nullptr : &*found;
}

std::string spellKind(const AppointmentException& exception) {
  return exception.deleted ? "deleted" : "changed to " + spellTime(exception.start);
}

void compareAllExceptions(Differences& out, const Appointment& sent, const Appointment& device) {
  for (const AppointmentException& exception : sent.exceptions) {
    const std::string name = "exception " + spellDay(exception.originalDate);
    if (const AppointmentException* other = findDay(device, exception.originalDate)) {
      compareExceptions(out, name, {sent, exception, device, *other});
    } else {
      out.push_back({name, spellKind(exception), "none"});
    }
  }
  for (const AppointmentException& exception : device.exceptions) {
    if (findDay(sent, exception.originalDate) != nullptr) continue;
    out.push_back({"exception " + spellDay(exception.originalDate), "none", spellKind(exception)});
  }
}

}  // namespace

std::vector<Difference> compareAppointments(const Appointment& sent, const Appointment& device) {
  Differences out;
  compareFields(out, kAppointmentFields, sent, device);
  compareRules(out, sent.recurrence, device.recurrence);
  compareAllExceptions(out, sent, device);
  return out;
}

}  // namespace desktop
