// Rules that make calls of the platform fail.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace emulator {

/// One line: the rule and what is wrong with it.
class FaultRuleError : public std::runtime_error {
 public:
  FaultRuleError(std::string_view rule, const std::string& reason)
      : std::runtime_error("fault rule '" + std::string(rule) + "': " + reason) {}
};

struct FaultRule {
  std::string call;                    ///< "CreateFileW" or "IAppointment.Save"
  std::uint64_t first = 1;             ///< counted from 1, among the calls of that name
  std::uint32_t result = 0;            ///< the result code or the last error
  std::optional<std::uint64_t> count;  ///< how many calls fail; without it all that follow
};

/// Reads CALL[#FIRST]=RESULT[*COUNT]; RESULT is decimal or 0x…. Throws FaultRuleError, also for a CALL that
/// is none of the platform's.
FaultRule parseFaultRule(std::string_view rule);

class Faults {
 public:
  explicit Faults(std::vector<FaultRule> rules);

  /// Counts one call; what it shall fail with, if it shall. Where several rules hold, the first given
  /// decides.
  std::optional<std::uint32_t> count(std::string_view call);

 private:
  struct Counted {
    FaultRule rule;
    std::uint64_t seen = 0;
  };
  std::vector<Counted> rules_;
};

}  // namespace emulator
