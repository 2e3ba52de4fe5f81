#include "emulator/calls/faults.h"

#include <charconv>

#include "emulator/calls/known_calls.h"

namespace emulator {

namespace {

template <typename Number>
std::optional<Number> number(std::string_view text, int base) {
  Number value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

std::optional<std::uint32_t> resultNumber(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) return number<std::uint32_t>(text.substr(2), 16);
  return number<std::uint32_t>(text, 10);
}

/// Cuts `text` at the mark and returns what follows it; nothing when there is no mark.
std::optional<std::string_view> cutAt(std::string_view& text, char mark) {
  const auto place = text.find(mark);
  if (place == std::string_view::npos) return std::nullopt;
  const std::string_view rest = text.substr(place + 1);
  text = text.substr(0, place);
  return rest;
}

std::uint64_t ordinal(std::string_view rule, std::string_view text, const char* what) {
  const auto value = number<std::uint64_t>(text, 10);
  if (!value || *value == 0) {
    throw FaultRuleError(rule,
                         "the " + std::string(what) + " '" + std::string(text) + "' is no number from 1 on");
  }
  return *value;
}

}  // namespace

FaultRule parseFaultRule(std::string_view rule) {
  std::string_view call = rule;
  const auto effect = cutAt(call, '=');
  if (!effect) throw FaultRuleError(rule, "there is no '=' with a result after the call");
  const auto first = cutAt(call, '#');
  std::string_view result = *effect;
  const auto count = cutAt(result, '*');

  FaultRule parsed;
  parsed.call = call;
  if (!isPlatformCall(call)) throw FaultRuleError(rule, "the platform has no call '" + parsed.call + "'");
  if (first) parsed.first = ordinal(rule, *first, "first call");
  const auto code = resultNumber(result);
  if (!code) {
    throw FaultRuleError(rule,
                         "the result '" + std::string(result) + "' is no 32-bit number, decimal or 0x...");
  }
  parsed.result = *code;
  if (count) parsed.count = ordinal(rule, *count, "count");
  return parsed;
}

Faults::Faults(std::vector<FaultRule> rules) {
  for (FaultRule& rule : rules) rules_.push_back({std::move(rule)});
}

std::optional<std::uint32_t> Faults::count(std::string_view call) {
  std::optional<std::uint32_t> result;
  for (auto& [rule, seen] : rules_) {
    if (rule.call != call) continue;
    ++seen;
    const bool holds = seen >= rule.first && (!rule.count || seen - rule.first < *rule.count);
    if (holds && !result) result = rule.result;
  }
  return result;
}

}  // namespace emulator
