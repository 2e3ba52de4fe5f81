#include "desktop/recurrence_block.h"

#include <array>
#include <vector>

#include "desktop/device_error.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"

namespace desktop {

namespace {

constexpr std::size_t kUnusedAfterDays = 32;
constexpr std::size_t kUnusedAfterEnd = 4;

RecurrenceType knownType(std::uint8_t code) {
  for (const RecurrenceShape& shape : kRecurrenceShapes) {
    if (static_cast<std::uint8_t>(shape.type) == code) return shape.type;
  }
  throw ProtocolError("there is no repetition type " + std::to_string(code));
}

RecurrenceEnd knownEnd(std::uint8_t code) {
  if (code < static_cast<std::uint8_t>(RecurrenceEnd::OnDate) ||
      code > static_cast<std::uint8_t>(RecurrenceEnd::Never)) {
    throw ProtocolError("a repetition can't end in manner " + std::to_string(code));
  }
  return static_cast<RecurrenceEnd>(code);
}

LocalTime knownDay(const LocalTime& time, const char* what) {
  if (!isValid(time)) throw ProtocolError(std::string("a repetition has no valid ") + what);
  return midnightOf(dayOf(time));
}

}  // namespace

void writeRecurrenceBlock(WireWriter& writer, const Recurrence& rule, std::uint32_t exceptionCount) {
  writer.time(rule.start);
  writer.time(rule.end == RecurrenceEnd::OnDate ? rule.endDate : LocalTime{});
  writer.zeros(kUnusedAfterDays);
  writer.byte(static_cast<std::uint8_t>(rule.type));
  writer.number(rule.end == RecurrenceEnd::AfterOccurrences ? rule.occurrences : 0);
  writer.byte(static_cast<std::uint8_t>(rule.end));
  writer.zeros(kUnusedAfterEnd);
  writer.number(rule.interval);
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    writer.number(uses(rule.type, parameter) ? rule.*parameter.member : 0);
  }
  writer.number(exceptionCount);
}

RecurrenceBlock readRecurrenceBlock(WireReader& reader) {
  RecurrenceBlock block;
  Recurrence& rule = block.rule;
  rule.start = knownDay(reader.time(), "first day");
  const LocalTime end = reader.time();
  reader.raw(kUnusedAfterDays);
  rule.type = knownType(reader.byte());
  const std::uint32_t occurrences = reader.number();
  rule.end = knownEnd(reader.byte());
  reader.raw(kUnusedAfterEnd);
  rule.interval = reader.number();
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    const std::uint32_t value = reader.number();
    if (uses(rule.type, parameter)) rule.*parameter.member = value;
  }
  block.exceptionCount = reader.number();
  if (rule.end == RecurrenceEnd::OnDate) rule.endDate = knownDay(end, "last day");
  if (rule.end == RecurrenceEnd::AfterOccurrences) rule.occurrences = occurrences;
  return block;
}

}  // namespace desktop
