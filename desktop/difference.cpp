#include "desktop/difference.h"

#include <algorithm>

#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// Longer texts are shown around the place where they part.
constexpr std::size_t kShownLength = 60;
constexpr std::size_t kShownBefore = 15;

std::string excerpt(const std::u16string& text, std::size_t place) {
  if (text.size() <= kShownLength) return quoted(text);
  const std::size_t begin = place > kShownBefore ? place - kShownBefore : 0;
  return "(" + std::to_string(text.size()) + " characters) ..." +
         quoted(std::u16string_view(text).substr(begin, kShownLength)) + "...";
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

}  // namespace

std::string spell(const Difference& difference) {
  return difference.property + ": sent " + difference.sent + ", device has " + difference.device;
}

void compareValue(Differences& out, const std::string& property, const std::u16string& sent,
                  const std::u16string& device) {
  if (sent == device) return;
  const auto parting = std::mismatch(sent.begin(), sent.end(), device.begin(), device.end()).first;
  const auto place = static_cast<std::size_t>(parting - sent.begin());
  out.push_back({property, excerpt(sent, place), excerpt(device, place)});
}

void compareValue(Differences& out, const std::string& property, const LocalTime& sent,
                  const LocalTime& device) {
  if (sent != device) out.push_back({property, spellTime(sent), spellTime(device)});
}

void compareValue(Differences& out, const std::string& property, bool sent, bool device) {
  const auto spelled = [](bool value) { return value ? "yes" : "no"; };
  if (sent != device) out.push_back({property, spelled(sent), spelled(device)});
}

void compareValue(Differences& out, const std::string& property, std::uint32_t sent, std::uint32_t device) {
  const auto spelled = [](std::uint32_t value) { return std::to_string(static_cast<std::int32_t>(value)); };
  if (sent != device) out.push_back({property, spelled(sent), spelled(device)});
}

void compareRules(Differences& out, const std::optional<Recurrence>& sent,
                  const std::optional<Recurrence>& device) {
  if (!sent || !device || sent->type != device->type) {
    if (sent != device) out.push_back({"repetition", spellRule(sent), spellRule(device)});
    return;
  }
  compareValue(out, "repetition: first day", sent->start, device->start);
  compareValue(out, "repetition: interval", sent->interval, device->interval);
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    if (!uses(sent->type, parameter)) continue;
    compareValue(out, "repetition: " + std::string(parameter.name), (*sent).*parameter.member,
                 (*device).*parameter.member);
  }
  const std::string sentEnd = spellEnd(*sent);
  const std::string deviceEnd = spellEnd(*device);
  if (sentEnd != deviceEnd) out.push_back({"repetition: end", sentEnd, deviceEnd});
}

}  // namespace desktop
