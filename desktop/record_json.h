// The values of records as JSON, for scripts.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "desktop/appointment.h"
#include "desktop/record_field.h"

namespace desktop {

nlohmann::json jsonValue(const std::u16string& text);
nlohmann::json jsonValue(std::uint32_t number);
nlohmann::json jsonValue(bool flag);
/// `2005-03-14T09:00:00`, local; null for none.
nlohmann::json jsonValue(const LocalTime& time);

nlohmann::json jsonOfRule(const Recurrence& rule);

/// A field's name as a key: `busy_status`
std::string keyOf(std::string_view name);

/// Each field under its name.
template <typename Fields, typename Value>
void addFields(nlohmann::json& json, const Fields& fields, const Value& value) {
  for (const auto& field : fields) {
    std::visit([&](auto member) { json[keyOf(field.name)] = jsonValue(value.*member); }, field.member);
  }
}

}  // namespace desktop
