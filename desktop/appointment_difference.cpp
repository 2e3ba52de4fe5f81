#include "desktop/appointment_difference.h"

#include <algorithm>

#include "desktop/appointment_fields.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// Longer texts are shown around the place where they part.
constexpr std::size_t kShownLength = 60;
constexpr std::size_t kShownBefore = 15;

using Differences = std::vector<Difference>;

std::string spellValue(bool value) {
  return value ? "yes" : "no";
}
/// Numbers are signed on the device: a reminder after the start is one of -165 minutes.
std::string spellValue(std::uint32_t value) {
  return std::to_string(static_cast<std::int32_t>(value));
}
std::string spellValue(const LocalTime& value) {
  return spellTime(value);
}

std::string excerpt(const std::u16string& text, std::size_t place) {
  if (text.size() <= kShownLength) return quoted(text);
  const std::size_t begin = place > kShownBefore ? place - kShownBefore : 0;
  return "(" + std::to_string(text.size()) + " characters) ..." +
         quoted(std::u16string_view(text).substr(begin, kShownLength)) + "...";
}

void compare(Differences& out, const std::string& property, const std::u16string& sent,
             const std::u16string& device) {
  if (sent == device) return;
  const auto parting = std::mismatch(sent.begin(), sent.end(), device.begin(), device.end()).first;
  const auto place = static_cast<std::size_t>(parting - sent.begin());
  out.push_back({property, excerpt(sent, place), excerpt(device, place)});
}

template <typename Value>
void compare(Differences& out, const std::string& property, const Value& sent, const Value& device) {
  if (sent != device) out.push_back({property, spellValue(sent), spellValue(device)});
}

std::string spellEnd(const Recurrence& rule) {
  switch (rule.end) {
    case RecurrenceEnd::OnDate:
      return "on " + spellDay(rule.endDate);
    case RecurrenceEnd::AfterOccurrences:
      return "after " + std::to_string(rule.occurrences) + " times";
    case RecurrenceEnd::Never:
      break;
  }
  return "never";
}

std::string spellRule(const std::optional<Recurrence>& rule) {
  return rule ? std::string(shapeOf(rule->type).name) : "none";
}

void compareRules(Differences& out, const std::optional<Recurrence>& sent,
                  const std::optional<Recurrence>& device) {
  if (!sent || !device || sent->type != device->type) {
    if (sent != device) out.push_back({"repetition", spellRule(sent), spellRule(device)});
    return;
  }
  compare(out, "repetition: first day", sent->start, device->start);
  compare(out, "repetition: interval", sent->interval, device->interval);
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    if (!uses(sent->type, parameter)) continue;
    compare(out, "repetition: " + std::string(parameter.name), (*sent).*parameter.member,
            (*device).*parameter.member);
  }
  const std::string sentEnd = spellEnd(*sent);
  const std::string deviceEnd = spellEnd(*device);
  if (sentEnd != deviceEnd) out.push_back({"repetition: end", sentEnd, deviceEnd});
}

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
  compare(out, property, sent.value_or(pair.sentSeries.*inherited),
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
  compare(out, name + ": start", pair.sent.start, pair.device.start);
  compare(out, name + ": end", pair.sent.end, pair.device.end);
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
  for (const AppointmentField& field : kAppointmentFields) {
    std::visit([&](auto member) { compare(out, std::string(field.name), sent.*member, device.*member); },
               field.member);
  }
  compareRules(out, sent.recurrence, device.recurrence);
  compareAllExceptions(out, sent, device);
  return out;
}

std::string spell(const Difference& difference) {
  return difference.property + ": sent " + difference.sent + ", device has " + difference.device;
}

}  // namespace desktop
