// Reads pim_recurrence_examples.txt and compares each rule's occurrences with the published dates.
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "emulator/pim/occurrence_cursor.h"
#include "emulator/pim/recurrence_series.h"

namespace emulator {
namespace {

struct Example {
  std::string name;
  RecurrenceRule rule;
  std::vector<Day> dates;
  bool goesOn = false;
};

void PrintTo(const Example& example, std::ostream* out) {
  *out << example.name;
}

Day parseDay(const std::string& text) {
  int year = 0, month = 0, day = 0;
  char dash = 0;
  std::istringstream(text) >> year >> dash >> month >> dash >> day;
  return dayOf(std::chrono::year{year} / month / day);
}

std::int32_t parseMask(const std::string& text) {
  static const std::string kDays = "SUMOTUWETHFRSA";
  std::int32_t mask = 0;
  for (std::size_t at = 0; at < text.size(); at += 3) mask |= 1 << (kDays.find(text.substr(at, 2)) / 2);
  return mask;
}

RecurrenceType parseType(const std::string& text) {
  static const std::map<std::string, RecurrenceType> kTypes = {
      {"daily", RecurrenceType::Daily},     {"weekly", RecurrenceType::Weekly},
      {"monthly", RecurrenceType::Monthly}, {"month-nth", RecurrenceType::MonthNth},
      {"yearly", RecurrenceType::Yearly},   {"year-nth", RecurrenceType::YearNth}};
  return kTypes.at(text);
}

void setParameter(RecurrenceRule& rule, const std::string& name, const std::string& value) {
  if (name == "type") {
    rule.type = parseType(value);
  } else if (name == "start") {
    rule.start = parseDay(value);
  } else if (name == "until") {
    rule.end = SeriesEnd::OnDate;
    rule.endDate = parseDay(value);
  } else if (name == "count") {
    rule.end = SeriesEnd::AfterCount;
    rule.count = std::stoi(value);
  } else if (name == "interval") {
    rule.interval = std::stoi(value);
  } else if (name == "mask") {
    rule.dayMask = parseMask(value);
  } else if (name == "instance") {
    rule.instance = std::stoi(value);
  } else {
    FAIL() << "no parameter " << name;
  }
}

void parseRule(RecurrenceRule& rule, std::istream& words) {
  std::string parameter;
  while (words >> parameter) {
    const std::size_t equals = parameter.find('=');
    setParameter(rule, parameter.substr(0, equals), parameter.substr(equals + 1));
  }
}

void parseDates(std::vector<Day>& dates, std::istream& words) {
  std::string month, day;
  words >> month;
  while (words >> day) dates.push_back(parseDay(month + "-" + day));
}

std::vector<Example> readExamples() {
  std::ifstream file(QORV_TEST_DATA "/pim_recurrence_examples.txt");
  std::vector<Example> examples;
  std::string line, key;
  while (std::getline(file, line)) {
    std::istringstream words(line);
    if (!(words >> key) || key[0] == '#') continue;
    if (key == "example") {
      std::getline(words >> std::ws, examples.emplace_back().name);
    } else if (key == "rule") {
      parseRule(examples.back().rule, words);
    } else if (key == "dates") {
      parseDates(examples.back().dates, words);
    } else {
      EXPECT_EQ(key, "more");
      examples.back().goesOn = true;
    }
  }
  return examples;
}

std::vector<Day> occurrencesOf(const Example& example) {
  std::vector<Day> days;
  OccurrenceCursor cursor(example.rule, example.rule.start);
  for (auto day = cursor.next(); day && isOccurrence(example.rule, *day); day = cursor.next()) {
    if (example.goesOn && days.size() == example.dates.size()) break;
    days.push_back(*day);
  }
  return days;
}

class PublishedExample : public testing::TestWithParam<Example> {};

TEST_P(PublishedExample, occursOnThePublishedDates) {
  EXPECT_EQ(occurrencesOf(GetParam()), GetParam().dates);
}

TEST_P(PublishedExample, answersQueriesAsTheDatesSay) {
  const Example& example = GetParam();
  const auto size = static_cast<std::int32_t>(example.dates.size());
  for (std::int32_t n = 1; n <= size; ++n) {
    const Day day = example.dates[static_cast<std::size_t>(n - 1)];
    EXPECT_EQ(nthOccurrence(example.rule, n), day);
    EXPECT_EQ(countThrough(example.rule, day), n);
  }
  EXPECT_EQ(firstOccurrence(example.rule), example.dates.front());
  if (example.goesOn) return;
  EXPECT_EQ(countOccurrences(example.rule), size);
  EXPECT_EQ(lastOccurrence(example.rule), example.dates.back());
}

INSTANTIATE_TEST_SUITE_P(Rfc5545, PublishedExample, testing::ValuesIn(readExamples()),
                         [](const auto& instance) { return "number" + std::to_string(instance.index + 1); });

TEST(PublishedExamples, areAllThere) {
  EXPECT_EQ(readExamples().size(), 15u);
}

}  // namespace
}  // namespace emulator
