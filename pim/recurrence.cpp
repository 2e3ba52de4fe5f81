#include "pim/recurrence.h"

#include <algorithm>
#include <array>
#include <span>

#include "pim/end_kind.h"
#include "platform/errors.h"

namespace qorv {

namespace {

/// One of a pattern's numbers and its place in the block.
struct Parameter {
  std::size_t offset;
  HRESULT (IRecurrencePattern::*get)(LONG*);
  HRESULT (IRecurrencePattern::*put)(LONG);
};

constexpr Parameter kDayOfWeekMask{RecurrenceBlock::kDayOfWeekMask, &IRecurrencePattern::get_DayOfWeekMask,
                                   &IRecurrencePattern::put_DayOfWeekMask};
constexpr Parameter kDayOfMonth{RecurrenceBlock::kDayOfMonth, &IRecurrencePattern::get_DayOfMonth,
                                &IRecurrencePattern::put_DayOfMonth};
constexpr Parameter kInstance{RecurrenceBlock::kInstance, &IRecurrencePattern::get_Instance,
                              &IRecurrencePattern::put_Instance};
constexpr Parameter kMonthOfYear{RecurrenceBlock::kMonthOfYear, &IRecurrencePattern::get_MonthOfYear,
                                 &IRecurrencePattern::put_MonthOfYear};

constexpr std::array kWeekly{kDayOfWeekMask};
constexpr std::array kMonthly{kDayOfMonth};
constexpr std::array kMonthNth{kInstance, kDayOfWeekMask};
constexpr std::array kYearly{kDayOfMonth, kMonthOfYear};
constexpr std::array kYearNth{kMonthOfYear, kInstance, kDayOfWeekMask};

struct TypeParameters {
  LONG type;
  std::span<const Parameter> parameters;  ///< in the order of their puts and gets
};

constexpr TypeParameters kTypes[] = {
    {olRecursDaily, {}},           {olRecursWeekly, kWeekly}, {olRecursMonthly, kMonthly},
    {olRecursMonthNth, kMonthNth}, {olRecursYearly, kYearly}, {olRecursYearNth, kYearNth},
};

const TypeParameters* parametersOf(LONG type) {
  const auto* found = std::ranges::find(kTypes, type, &TypeParameters::type);
  return found != std::ranges::end(kTypes) ? found : nullptr;
}

void putType(IRecurrencePattern& pattern, const RecurrenceBlock& block) {
  const TypeParameters* type = parametersOf(block.type());
  if (!type) return;
  pattern.put_RecurrenceType(type->type);
  for (const Parameter& parameter : type->parameters) {
    (pattern.*parameter.put)(static_cast<LONG>(block.number(parameter.offset)));
  }
}

struct TimeOfDay {
  WORD hour;
  WORD minute;
  WORD second;
};

using PutDate = HRESULT (IRecurrencePattern::*)(DATE);

/// The milliseconds stay as they came.
void putDate(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block,
             std::size_t offset, TimeOfDay timeOfDay, PutDate put) {
  SYSTEMTIME time = block.time(offset);
  time.wHour = timeOfDay.hour;
  time.wMinute = timeOfDay.minute;
  time.wSecond = timeOfDay.second;
  block.setTime(offset, time);
  DATE date;
  if (SUCCEEDED(application.SystemTimeToVariantTime(&time, &date))) (pattern.*put)(date);
}

void putEnd(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block) {
  switch (block.endKind()) {
    case EndKind::OnDate:
      putDate(application, pattern, block, RecurrenceBlock::kEnd, {23, 59, 59},
              &IRecurrencePattern::put_PatternEndDate);
      break;
    case EndKind::AfterOccurrences:
      block.setNumber(RecurrenceBlock::kOccurrences,
                      std::min(block.number(RecurrenceBlock::kOccurrences), kMaxOccurrences));
      pattern.put_Occurrences(static_cast<LONG>(block.number(RecurrenceBlock::kOccurrences)));
      break;
    case EndKind::Never:
      pattern.put_NoEndDate(VARIANT_TRUE);
      break;
  }
}

void limitInterval(IRecurrencePattern& pattern) {
  LONG interval = 0;
  if (SUCCEEDED(pattern.get_Interval(&interval)) && interval > kMaxInterval)
    pattern.put_Interval(kMaxInterval);
}

using GetDate = HRESULT (IRecurrencePattern::*)(DATE*);

void fillDate(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block,
              std::size_t offset, GetDate get) {
  DATE date;
  SYSTEMTIME time{};
  (pattern.*get)(&date);
  if (SUCCEEDED(application.VariantTimeToSystemTime(date, &time))) block.setTime(offset, time);
}

void fillNumber(IRecurrencePattern& pattern, RecurrenceBlock& block, const Parameter& parameter) {
  LONG value = 0;
  if (SUCCEEDED((pattern.*parameter.get)(&value)))
    block.setNumber(parameter.offset, static_cast<DWORD>(value));
}

/// A pattern with an end date may refuse to tell its occurrences: that is how it says so.
void fillEnd(IRecurrencePattern& pattern, RecurrenceBlock& block) {
  VARIANT_BOOL noEnd = VARIANT_FALSE;
  pattern.get_NoEndDate(&noEnd);
  LONG occurrences = 0;
  if (noEnd == VARIANT_TRUE) {
    block.setEndKind(EndKind::Never);
  } else if (SUCCEEDED(pattern.get_Occurrences(&occurrences))) {
    block.setEndKind(EndKind::AfterOccurrences);
    block.setNumber(RecurrenceBlock::kOccurrences, static_cast<DWORD>(occurrences));
  } else {
    block.setEndKind(EndKind::OnDate);
  }
}

}  // namespace

void applyBlock(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block) {
  putType(pattern, block);
  pattern.put_Interval(static_cast<LONG>(block.number(RecurrenceBlock::kInterval)));
  putDate(application, pattern, block, RecurrenceBlock::kStart, {0, 0, 0},
          &IRecurrencePattern::put_PatternStartDate);
  putEnd(application, pattern, block);
  limitInterval(pattern);
}

void fillBlock(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block) {
  LONG type = 0;
  pattern.get_RecurrenceType(&type);
  block.setType(static_cast<BYTE>(type));
  fillDate(application, pattern, block, RecurrenceBlock::kStart, &IRecurrencePattern::get_PatternStartDate);
  fillDate(application, pattern, block, RecurrenceBlock::kEnd, &IRecurrencePattern::get_PatternEndDate);
  constexpr Parameter kInterval{RecurrenceBlock::kInterval, &IRecurrencePattern::get_Interval, nullptr};
  fillNumber(pattern, block, kInterval);
  if (const TypeParameters* parameters = parametersOf(type)) {
    for (const Parameter& parameter : parameters->parameters) fillNumber(pattern, block, parameter);
  }
  fillEnd(pattern, block);
  block.setNumber(RecurrenceBlock::kExceptionCount, 0);
}

void fillItemBlock(IPOutlookApp& application, IRecurrencePattern& pattern, DWORD oid, CEPROPID property,
                   RecurrenceBlock& block) {
  fillBlock(application, pattern, block);
  if (block.endKind() != EndKind::Never) correctEndKind(application, oid, property, block);
}

}  // namespace qorv
