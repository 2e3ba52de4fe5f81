#include "emulator/messaging/mail_value.h"

#include <array>

namespace emulator {

PropertyTag answeredTag(PropertyTag asked, const MailValue& value) {
  constexpr std::array<ULONG, std::variant_size_v<MailValue>> kTypes{PT_ERROR, PT_LONG, PT_UNICODE,
                                                                     PT_SYSTIME, PT_BINARY};
  return propertyTag(propertyNumber(asked), kTypes[value.index()]);
}

}  // namespace emulator
