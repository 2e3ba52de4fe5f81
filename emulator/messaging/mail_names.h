// Named properties: the numbers that the device gave to names.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "emulator/store/sqlite.h"
#include "platform/messaging_types.h"

namespace emulator {

/// Where a meeting that came as a message takes place.
inline constexpr std::u16string_view kWhereName = u"PR_SPLUS_WHERE";

struct MailName {
  GUID propertySet;
  std::variant<LONG, std::u16string> name;  ///< MNID_ID or MNID_STRING
};

class MailNames {
 public:
  explicit MailNames(Connection& connection) : connection_(connection) {}

  /// The number in the high word of the property's tag. Nothing for a name without one, or when a new one is
  /// to be made and none is left.
  std::optional<ULONG> numberOf(const MailName& name, bool make);
  /// Whether this is the number of kWhereName.
  bool isWhere(ULONG number);

 private:
  std::optional<ULONG> find(const MailName& name);

  Connection& connection_;
};

}  // namespace emulator
