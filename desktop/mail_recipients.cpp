#include "desktop/mail_recipients.h"

#include <algorithm>
#include <strings.h>

#include "desktop/item_text.h"
#include "desktop/mime_library.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr char16_t kSeparator = u';';

/// "undisclosed-recipients:;" and its like
constexpr std::string_view kUnnamed = "undisclosed";

std::u16string entryOf(const MimeAddress& address) {
  if (!address.address.empty()) return asOneLine(toUtf16(address.address));
  const std::u16string text = asOneLine(toUtf16(address.name));
  const bool isHint = strncasecmp(address.name.c_str(), kUnnamed.data(), kUnnamed.size()) == 0;
  return isHint ? std::u16string() : text;
}

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
    const std::u16string entry = entryOf(address);
    if (entry.empty() || entry.find(kSeparator) != std::u16string::npos) continue;
    if (!list.empty()) list += kSeparator;
    list += entry;
  }
  return list;
}

}  // namespace desktop
