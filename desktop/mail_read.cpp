#include "desktop/mail_read.h"

#include <algorithm>
#include <array>
#include <strings.h>
#include <utility>

#include "desktop/item_refused.h"
#include "desktop/item_text.h"
#include "desktop/local_time.h"
#include "desktop/mail_body.h"
#include "desktop/mail_folder.h"
#include "desktop/mail_recipients.h"
#include "desktop/mime_library.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// One of them is in every mail; a text that isn't one may well have a first line with a colon.
constexpr std::array kUsualHeaders{"From",     "To",         "Cc",           "Subject", "Date",
                                   "Received", "Message-ID", "MIME-Version", "Sender"};
/// How some programs mark what wasn't sent yet.
constexpr const char* kUnsentHeader = "X-Unsent";

const MimeHeader* find(const MimeMessage& mail, const char* name) {
  const auto found = std::ranges::find_if(
      mail.headers, [&](const MimeHeader& header) { return strcasecmp(header.name.c_str(), name) == 0; });
  return found == mail.headers.end() ? nullptr : &*found;
}

MailFolder folderOf(const MimeMessage& mail) {
  if (const MimeHeader* named = find(mail, kFolderHeader)) {
    if (const auto folder = mailFolderNamed(named->value)) return *folder;
  }
  const MimeHeader* unsent = find(mail, kUnsentHeader);
  return unsent != nullptr && unsent->value == "1" ? MailFolder::Drafts : MailFolder::Inbox;
}

bool isRead(const MimeMessage& mail) {
  const MimeHeader* status = find(mail, kStatusHeader);
  return status != nullptr && status->value.find('R') != std::string::npos;
}

LocalTime dateOf(const MimeMessage& mail, std::vector<std::string>& notes) {
  if (!mail.date) {
    if (find(mail, "Date") != nullptr) notes.emplace_back("its date can't be read and is left out");
    return {};
  }
  const LocalTime date = clockAt(*mail.date);
  if (isValid(date)) return date;
  notes.emplace_back("its date is none that the device knows");
  return {};
}

struct AddressHeader {
  const char* name;
  std::vector<MimeAddress> MimeMessage::*addresses;
  std::u16string Message::*list;
};

constexpr std::array kAddressHeaders{
    AddressHeader{"From", &MimeMessage::from, &Message::sender},
    AddressHeader{"To", &MimeMessage::to, &Message::to},
    AddressHeader{"Cc", &MimeMessage::cc, &Message::cc},
    AddressHeader{"Bcc", &MimeMessage::bcc, &Message::bcc},
};

/// A header that means to have no addresses.
bool isHint(const std::string& value) {
  return value.find_first_not_of(" \t") == std::string::npos || value.find(":;") != std::string::npos ||
         value.find(": ;") != std::string::npos;
}

bool hasNames(const std::vector<MimeAddress>& addresses) {
  return std::ranges::any_of(addresses, [](const MimeAddress& address) {
    return !address.name.empty() && !address.address.empty() && address.name != address.address;
  });
}

/// Whether a header means addresses that the list doesn't have.
bool isLost(const MimeHeader* header, const std::vector<MimeAddress>& addresses, const std::u16string& list) {
  if (list.empty()) return header != nullptr && !isHint(header->value);
  return std::cmp_less(std::ranges::count(list, u';') + 1, addresses.size());
}

void takeAddresses(const MimeMessage& mail, MailText& read) {
  bool isNamed = false;
  for (const AddressHeader& header : kAddressHeaders) {
    const std::vector<MimeAddress>& addresses = mail.*header.addresses;
    std::u16string& list = read.message.*header.list;
    list = listOfAddresses(addresses);
    isNamed = isNamed || hasNames(addresses);
    if (isLost(find(mail, header.name), addresses, list)) {
      read.notes.push_back(std::string("its ") + header.name + " has what is no address for the device");
    }
  }
  if (isNamed) read.notes.emplace_back("the names beside its addresses are left out");
}

/// Old programs ended lines with a CR alone.
std::string withLineEnds(std::string_view text) {
  std::string lines(text);
  if (lines.find('\n') == std::string::npos) std::ranges::replace(lines, '\r', '\n');
  return lines;
}

}  // namespace

MailText readMail(std::string_view text) {
  const MimeMessage mail = parseMime(withLineEnds(text));
  const auto isThere = [&](const char* name) { return find(mail, name) != nullptr; };
  if (std::ranges::none_of(kUsualHeaders, isThere))
    throw ItemRefused("not a mail: it has none of a mail's headers");
  MailText read;
  read.uid = mail.id;
  read.message.folder = folderOf(mail);
  read.message.isRead = isRead(mail);
  takeAddresses(mail, read);
  read.message.subject = asOneLine(toUtf16(mail.subject));
  read.message.delivered = dateOf(mail, read.notes);
  MailBody body = bodyOf(mail.content);
  read.message.body = withDeviceLineEnds(toUtf16(body.text));
  read.message.attachments = std::move(body.attachments);
  read.notes.insert(read.notes.end(), body.notes.begin(), body.notes.end());
  return read;
}

}  // namespace desktop
