// What a device made of an item, against what it was sent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "desktop/appointment.h"

namespace desktop {

/// All spelled for people, in one line each.
struct Difference {
  std::string property;  ///< `location`, `repetition: interval`, `exception 2005-03-21: start`
  std::string sent;
  std::string device;
};

using Differences = std::vector<Difference>;

/// `location: sent "Room 4", device has "Room"`
std::string spell(const Difference& difference);

/// Each adds a difference unless both are the same. Long texts are shown around the place where they part.
void compareValue(Differences& out, const std::string& property, const std::u16string& sent,
                  const std::u16string& device);
void compareValue(Differences& out, const std::string& property, const LocalTime& sent,
                  const LocalTime& device);
void compareValue(Differences& out, const std::string& property, bool sent, bool device);
/// Numbers are signed on the device: a reminder after the start is one of -165 minutes.
void compareValue(Differences& out, const std::string& property, std::uint32_t sent, std::uint32_t device);

/// Each field under its name.
template <typename Fields, typename Value>
void compareFields(Differences& out, const Fields& fields, const Value& sent, const Value& device) {
  for (const auto& field : fields) {
    std::visit([&](auto member) { compareValue(out, std::string(field.name), sent.*member, device.*member); },
               field.member);
  }
}

void compareRules(Differences& out, const std::optional<Recurrence>& sent,
                  const std::optional<Recurrence>& device);

}  // namespace desktop
