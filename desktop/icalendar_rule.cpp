#include "desktop/icalendar_rule.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "desktop/local_time.h"

namespace desktop {
namespace {

constexpr std::array<std::string_view, 7> kDayNames = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
constexpr std::uint32_t kLastInstance = 5;
constexpr std::uint32_t kLastMonthDay = 31;
/// Every month has this one.
constexpr std::uint32_t kSafeMonthDay = 28;
/// By month; February without its leap day.
constexpr std::array<std::uint32_t, 12> kMonthDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Patterns to rules

std::vector<std::string> daysOf(std::uint32_t mask) {
  std::vector<std::string> days;
  for (std::size_t day = 0; day < kDayNames.size(); ++day) {
    if ((mask >> day & 1) != 0) days.emplace_back(kDayNames[day]);
  }
  return days;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ",") + part;
  return text;
}

std::string monthDayParts(std::uint32_t day, std::uint32_t shortestMonth) {
  if (day == 0) return {};
  if (day > kLastMonthDay) throw std::invalid_argument("no day of a month: " + std::to_string(day));
  if (day <= shortestMonth) return ";BYMONTHDAY=" + std::to_string(day);
  if (day == kLastMonthDay) return ";BYMONTHDAY=-1";
  std::vector<std::string> days;
  for (std::uint32_t each = shortestMonth; each <= day; ++each) days.push_back(std::to_string(each));
  return ";BYMONTHDAY=" + joined(days) + ";BYSETPOS=-1";
}

std::string nthWeekdayParts(std::uint32_t instance, std::uint32_t mask) {
  const std::string position = instance == kLastInstance ? "-1" : std::to_string(instance);
  const std::vector<std::string> days = daysOf(mask);
  if (days.size() == 1) return ";BYDAY=" + position + days.front();
  return ";BYDAY=" + joined(days) + ";BYSETPOS=" + position;
}

std::string yearlyParts(const Recurrence& pattern) {
  if (pattern.monthOfYear < 1 || pattern.monthOfYear > kMonthDays.size()) {
    throw std::invalid_argument("no month: " + std::to_string(pattern.monthOfYear));
  }
  return "FREQ=YEARLY;BYMONTH=" + std::to_string(pattern.monthOfYear);
}

std::string yearlyDayParts(const Recurrence& pattern) {
  const std::string month = yearlyParts(pattern);
  return month + monthDayParts(pattern.dayOfMonth, kMonthDays[pattern.monthOfYear - 1]);
}

std::string typeParts(const Recurrence& pattern) {
  switch (pattern.type) {
    case RecurrenceType::Daily:
      return "FREQ=DAILY";
    case RecurrenceType::Weekly:
      return "FREQ=WEEKLY;BYDAY=" + joined(daysOf(pattern.dayOfWeekMask));
    case RecurrenceType::Monthly:
      return "FREQ=MONTHLY" + monthDayParts(pattern.dayOfMonth, kSafeMonthDay);
    case RecurrenceType::MonthlyNth:
      return "FREQ=MONTHLY" + nthWeekdayParts(pattern.instance, pattern.dayOfWeekMask);
    case RecurrenceType::Yearly:
      return yearlyDayParts(pattern);
    case RecurrenceType::YearlyNth:
      return yearlyParts(pattern) + nthWeekdayParts(pattern.instance, pattern.dayOfWeekMask);
  }
  return {};
}

std::string digitsOf(const LocalTime& day) {
  std::string text = spellDay(day);
  std::erase(text, '-');
  return text;
}

std::string endPart(const Recurrence& pattern, bool allDay) {
  switch (pattern.end) {
    case RecurrenceEnd::OnDate:
      return ";UNTIL=" + digitsOf(pattern.endDate) + (allDay ? "" : "T235959");
    case RecurrenceEnd::AfterOccurrences:
      return ";COUNT=" + std::to_string(pattern.occurrences);
    case RecurrenceEnd::Never:
      return {};
  }
  return {};
}

// Rules to patterns

/// The values of one BY part.
template <std::size_t size>
std::span<const short> valuesOf(const short (&part)[size]) {
  const auto* end = std::find(std::begin(part), std::end(part), short{ICAL_RECURRENCE_ARRAY_MAX});
  return {std::begin(part), end};
}

std::uint32_t weekdayBit(const LocalTime& day) {
  return 1U << std::chrono::weekday(dayOf(day)).c_encoding();
}

std::uint32_t shiftedMask(std::uint32_t mask, int days) {
  const int turn = (days + 7) % 7;
  return ((mask << turn) | (mask >> (7 - turn))) & 0x7F;
}

/// A rule and the start of its series, seen as a pattern.
class Interpreter {
 public:
  Interpreter(const icalrecurrencetype& rule, const LocalTime& start, int dayShift)
      : rule_(rule), start_(start), dayShift_(dayShift) {}

  std::optional<Recurrence> pattern() const {
    switch (rule_.freq) {
      case ICAL_DAILY_RECURRENCE:
        return valuesOf(rule_.by_day).empty() ? of(RecurrenceType::Daily) : weekly();
      case ICAL_WEEKLY_RECURRENCE:
        return weekly();
      case ICAL_MONTHLY_RECURRENCE:
        return monthly();
      case ICAL_YEARLY_RECURRENCE:
        return yearly();
      default:
        return std::nullopt;
    }
  }

 private:
  Recurrence of(RecurrenceType type) const {
    Recurrence pattern;
    pattern.type = type;
    pattern.start = midnightOf(dayOf(start_));
    pattern.interval = static_cast<std::uint32_t>(rule_.interval);
    return pattern;
  }

  Recurrence weekly() const {
    Recurrence pattern = of(RecurrenceType::Weekly);
    pattern.dayOfWeekMask = weekdays();
    return pattern;
  }

  std::optional<Recurrence> monthly() const {
    if (valuesOf(rule_.by_day).empty()) {
      Recurrence pattern = of(RecurrenceType::Monthly);
      pattern.dayOfMonth = monthDay();
      return pattern;
    }
    const std::optional<std::uint32_t> nth = instance();
    if (!nth) return std::nullopt;
    Recurrence pattern = of(RecurrenceType::MonthlyNth);
    pattern.instance = *nth;
    pattern.dayOfWeekMask = weekdays();
    return pattern;
  }

  std::optional<Recurrence> yearly() const {
    std::optional<Recurrence> pattern = monthly();
    if (!pattern) return pattern;
    pattern->type =
        pattern->type == RecurrenceType::Monthly ? RecurrenceType::Yearly : RecurrenceType::YearlyNth;
    const auto months = valuesOf(rule_.by_month);
    if (!months.empty() && months.front() > static_cast<int>(kMonthDays.size())) return std::nullopt;
    pattern->monthOfYear = months.empty() ? start_.month : static_cast<std::uint32_t>(months.front());
    return pattern;
  }

  std::uint32_t weekdays() const {
    std::uint32_t mask = 0;
    for (const short day : valuesOf(rule_.by_day)) {
      mask |= 1U << (icalrecurrencetype_day_day_of_week(day) - ICAL_SUNDAY_WEEKDAY);
    }
    return mask == 0 ? weekdayBit(start_) : shiftedMask(mask, dayShift_);
  }

  /// The greatest day named; of "28,29,30, the last that there is" it is the one that counts.
  std::uint32_t monthDay() const {
    const auto days = valuesOf(rule_.by_month_day);
    if (days.empty()) return start_.day;
    const int day = *std::max_element(days.begin(), days.end());
    return day == -1 ? kLastMonthDay : static_cast<std::uint32_t>(std::clamp(day + dayShift_, 1, 31));
  }

  /// Which one of the weekdays: as the days say, else BYSETPOS, else as the first entry has it.
  std::optional<std::uint32_t> instance() const {
    int position = icalrecurrencetype_day_position(rule_.by_day[0]);
    const auto positions = valuesOf(rule_.by_set_pos);
    if (position == 0 && !positions.empty()) position = positions.front();
    if (position == 0) position = (start_.day - 1) / 7 + 1;
    if (position == -1) return kLastInstance;
    if (position < 1 || position >= static_cast<int>(kLastInstance)) return std::nullopt;
    return static_cast<std::uint32_t>(position);
  }

  const icalrecurrencetype& rule_;
  const LocalTime& start_;
  int dayShift_;
};

}  // namespace

std::string ruleText(const Recurrence& recurrence, bool allDay) {
  std::string text = typeParts(recurrence);
  if (recurrence.interval > 1) text += ";INTERVAL=" + std::to_string(recurrence.interval);
  if (recurrence.interval > 1 && recurrence.type == RecurrenceType::Weekly) text += ";WKST=SU";
  return text + endPart(recurrence, allDay);
}

std::optional<Recurrence> closestPattern(const icalrecurrencetype& rule, const LocalTime& start,
                                         int dayShift) {
  return Interpreter(rule, start, dayShift).pattern();
}

}  // namespace desktop
