#include "emulator/snapshot/item_refusal.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/errors.h"

namespace emulator {
namespace {

struct Refusal {
  HRESULT result;
  const char* reason;
};

constexpr std::array kRefusals{
    Refusal{E_INVALIDREMINDERTIME, "its reminder is before 1900-01-01"},
    Refusal{E_INVALIDDATES, "its End is past 2999-12-31"},
    Refusal{E_INVALIDARG, "the series has no occurrence on its OriginalDate"},
    Refusal{E_EXCEPTIONSAMEDAY, "another changed occurrence is on its day"},
};

}  // namespace

void refuseItem(const JsonNode& node, HRESULT result) {
  const auto refusal = std::ranges::find(kRefusals, result, &Refusal::result);
  if (refusal != kRefusals.end()) node.refuse(refusal->reason);
  std::array<char, 40> number{};
  std::snprintf(number.data(), number.size(), "0x%08X", static_cast<unsigned>(result));
  node.refuse(std::string("refused by the object model: ") + number.data());
}

}  // namespace emulator
