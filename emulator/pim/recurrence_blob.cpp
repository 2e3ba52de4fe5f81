#include "emulator/pim/recurrence_blob.h"

#include <algorithm>

#include "emulator/pim/recurrence_series.h"

namespace emulator {
namespace {

constexpr std::uint16_t kVersion = 0x3004;
constexpr std::uint32_t kAppointmentReaderVersion = 0x3006;
constexpr std::uint32_t kAppointmentWriterVersion = 0x3009;
constexpr std::uint32_t kEndsOnDate = 0x2021;
constexpr std::uint32_t kEndsAfterCount = 0x2022;
constexpr std::uint32_t kEndsNever = 0x2023;
constexpr std::uint32_t kCountOfEndless = 10;
constexpr std::uint32_t kEndOfEndless = 0x5AE980DF;  // 4500-12-31 23:59
constexpr std::int64_t kMinutesPerWeek = 7 * kMinutesPerDay;
constexpr std::chrono::year kBlobYear{1601};
constexpr Day kBlobEpoch = dayOf(kBlobYear / 1 / 1);

class BlobWriter {
 public:
  void word(std::uint32_t value) { append(value, 2); }
  void dword(std::uint32_t value) { append(value, 4); }
  void day(Day value) { dword(static_cast<std::uint32_t>((value - kBlobEpoch) * kMinutesPerDay)); }
  void days(std::vector<Day> values) {
    std::sort(values.begin(), values.end());
    dword(static_cast<std::uint32_t>(values.size()));
    for (const Day value : values) day(value);
  }
  std::vector<std::uint8_t> take() { return std::move(bytes_); }

 private:
  void append(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  }

  std::vector<std::uint8_t> bytes_;
};

std::uint32_t frequencyOf(RecurrenceType type) {
  if (type == RecurrenceType::Daily) return 0x200A;
  if (type == RecurrenceType::Weekly) return 0x200B;
  return usesMonth(type) ? 0x200D : 0x200C;
}

std::uint32_t patternTypeOf(RecurrenceType type) {
  if (type == RecurrenceType::Daily) return 0;
  if (type == RecurrenceType::Weekly) return 1;
  return usesDayOfMonth(type) ? 2 : 3;
}

std::int64_t monthsPerPeriod(const RecurrenceRule& rule) {
  return std::int64_t{rule.interval} * (usesMonth(rule.type) ? kMonthsPerYear : 1);
}

std::int64_t periodOf(const RecurrenceRule& rule) {
  if (rule.type == RecurrenceType::Daily) return rule.interval * kMinutesPerDay;
  return rule.type == RecurrenceType::Weekly ? rule.interval : monthsPerPeriod(rule);
}

// Minutes from 1601 to the first of the month that lies (months since January 1601) modulo the period after
// it.
std::int64_t firstOfMonthlyPeriod(Day firstDay, std::int64_t months) {
  const auto date = dateOf(firstDay);
  const int since = (static_cast<int>(date.year()) - static_cast<int>(kBlobYear)) * kMonthsPerYear +
                    static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  const auto first = kBlobYear / 1 / 1 + std::chrono::months{static_cast<int>(since % months)};
  return (dayOf(first) - kBlobEpoch) * kMinutesPerDay;
}

std::int64_t firstDateTime(const RecurrenceRule& rule, Day firstDay) {
  if (rule.type == RecurrenceType::Daily) return (firstDay - kBlobEpoch) * kMinutesPerDay % periodOf(rule);
  if (rule.type != RecurrenceType::Weekly) return firstOfMonthlyPeriod(firstDay, monthsPerPeriod(rule));
  const Day sunday = firstDay - static_cast<Day>(weekdayOf(firstDay));
  return (sunday - kBlobEpoch) * kMinutesPerDay % (rule.interval * kMinutesPerWeek);
}

void writeParameters(BlobWriter& blob, const RecurrenceRule& rule) {
  if (usesDayMask(rule.type)) blob.dword(static_cast<std::uint32_t>(rule.dayMask));
  if (usesDayOfMonth(rule.type)) blob.dword(static_cast<std::uint32_t>(rule.dayOfMonth));
  if (usesInstance(rule.type)) blob.dword(static_cast<std::uint32_t>(rule.instance));
}

void writeEnd(BlobWriter& blob, const RecurrenceRule& rule) {
  const bool never = rule.end == SeriesEnd::Never;
  blob.dword(never ? kEndsNever : rule.end == SeriesEnd::OnDate ? kEndsOnDate : kEndsAfterCount);
  blob.dword(never ? kCountOfEndless : static_cast<std::uint32_t>(statedCount(rule)));
}

void writeTimes(BlobWriter& blob, const OccurrenceTimes& times) {
  blob.dword(kAppointmentReaderVersion);
  blob.dword(kAppointmentWriterVersion);
  blob.dword(static_cast<std::uint32_t>(times.start));
  blob.dword(static_cast<std::uint32_t>(times.end));
  blob.word(0);
  blob.dword(0);
  blob.dword(0);
}

}  // namespace

std::vector<std::uint8_t> recurrenceBlob(const StoredRecurrence& recurrence) {
  const RecurrenceRule& rule = recurrence.rule;
  const Day first = firstOccurrence(rule).value_or(rule.start);
  BlobWriter blob;
  blob.word(kVersion);
  blob.word(kVersion);
  blob.word(frequencyOf(rule.type));
  blob.word(patternTypeOf(rule.type));
  blob.word(0);
  blob.dword(static_cast<std::uint32_t>(firstDateTime(rule, first)));
  blob.dword(static_cast<std::uint32_t>(periodOf(rule)));
  blob.dword(0);
  writeParameters(blob, rule);
  writeEnd(blob, rule);
  blob.dword(0);
  blob.days(recurrence.replaced);
  blob.days(recurrence.changed);
  blob.day(first);
  if (rule.end == SeriesEnd::Never) {
    blob.dword(kEndOfEndless);
  } else {
    blob.day(lastOccurrence(rule).value_or(first));
  }
  if (recurrence.times && recurrence.changed.empty()) writeTimes(blob, *recurrence.times);
  return blob.take();
}

}  // namespace emulator
