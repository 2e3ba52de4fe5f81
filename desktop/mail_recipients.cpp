#include "desktop/mail_recipients.h"

#include <algorithm>

#include "desktop/icalendar_text.h"
#include "desktop/mime_library.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr char16_t kSeparator = u';';

}  // namespace

std::vector<MimeAddress> addressesOfList(std::u16string_view list) {
  std::vector<MimeAddress> addresses;
  while (!list.empty()) {
    const std::u16string_view entry = list.substr(0, list.find(kSeparator));
    list.remove_prefix(std::min(list.size(), entry.size() + 1));
    const std::string text = toUtf8(asOneLine(entry));
    if (text.empty()) continue;
    const std::vector<MimeAddress> parsed = parseAddresses(text);
    if (parsed.empty()) addresses.push_back({text, {}});
    addresses.insert(addresses.end(), parsed.begin(), parsed.end());
  }
  return addresses;
}

std::u16string listOfAddresses(const std::vector<MimeAddress>& addresses) {
  std::u16string list;
  for (const MimeAddress& address : addresses) {
    std::u16string entry = asOneLine(toUtf16(address.address.empty() ? address.name : address.address));
    std::erase(entry, kSeparator);
    if (entry.empty()) continue;
    if (!list.empty()) list += kSeparator;
    list += entry;
  }
  return list;
}

}  // namespace desktop
