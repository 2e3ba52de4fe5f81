// Addresses, as the MIME library reads and spells them.
#include "desktop/mime_addresses.h"

#include "desktop/mime_handles.h"
#include "desktop/mime_library.h"

namespace desktop {

namespace {

void addTo(std::vector<MimeAddress>& addresses, InternetAddress& address) {
  if (INTERNET_ADDRESS_IS_MAILBOX(&address)) {
    const char* spelled = internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(&address));
    addresses.push_back({mimeText(internet_address_get_name(&address)), mimeText(spelled)});
  } else if (INTERNET_ADDRESS_IS_GROUP(&address)) {
    InternetAddressList* members = internet_address_group_get_members(INTERNET_ADDRESS_GROUP(&address));
    const std::vector<MimeAddress> all = addressesIn(members);
    addresses.insert(addresses.end(), all.begin(), all.end());
    if (all.empty()) addresses.push_back({mimeText(internet_address_get_name(&address)), {}});
  }
}

}  // namespace

std::vector<MimeAddress> addressesIn(InternetAddressList* list) {
  std::vector<MimeAddress> addresses;
  const int count = list == nullptr ? 0 : internet_address_list_length(list);
  for (int i = 0; i < count; ++i) addTo(addresses, *internet_address_list_get_address(list, i));
  return addresses;
}

AddressHandle makeAddress(const MimeAddress& address) {
  const char* name = address.name.empty() ? nullptr : address.name.c_str();
  AddressHandle made(address.address.empty() ? internet_address_group_new(address.name.c_str())
                                             : internet_address_mailbox_new(name, address.address.c_str()));
  internet_address_set_charset(made.get(), "utf-8");
  return made;
}

std::vector<MimeAddress> parseAddresses(const std::string& text) {
  startMimeLibrary();
  const MimeHandle<InternetAddressList> list(
      internet_address_list_parse(lenientOptions().get(), text.c_str()));
  return addressesIn(list.get());
}

std::string spellAddress(const MimeAddress& address) {
  startMimeLibrary();
  constexpr gboolean kEncoded = FALSE;
  return takeMimeText(internet_address_to_string(makeAddress(address).get(), nullptr, kEncoded));
}

}  // namespace desktop
