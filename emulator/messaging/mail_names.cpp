#include "emulator/messaging/mail_names.h"

#include <cstring>

namespace emulator {
namespace {

constexpr ULONG kFirstNumber = 0x8000;
/// The store's own properties lie among the numbers for names.
constexpr ULONG kFirstOwn = 0x8100;
constexpr ULONG kPastOwn = 0x8200;
constexpr ULONG kLastNumber = 0xFFFE;

ByteView bytesOf(const GUID& identifier) {
  return {reinterpret_cast<const std::uint8_t*>(&identifier), sizeof identifier};
}

ULONG after(ULONG number) {
  return number + 1 == kFirstOwn ? kPastOwn : number + 1;
}

}  // namespace

std::optional<ULONG> MailNames::numberOf(const MailName& name, bool make) {
  if (const auto number = find(name)) return number;
  if (!make) return std::nullopt;
  ULONG number = kFirstNumber;
  {
    Cursor last = connection_.query("SELECT MAX(number) FROM mail_name");
    if (last.next() && !last.isNull(0)) number = after(last.get<ULONG>(0));
  }
  if (number > kLastNumber) return std::nullopt;
  connection_.run("INSERT INTO mail_name (number, property_set, name) VALUES (?, ?, ?)", number,
                  bytesOf(name.propertySet), name.name);
  return number;
}

bool MailNames::isWhere(ULONG number) {
  Cursor row = connection_.query("SELECT property_set FROM mail_name WHERE number = ? AND name = ?", number,
                                 kWhereName);
  if (!row.next()) return false;
  const auto set = row.get<ByteView>(0);
  return set.size() == sizeof PS_MAPI && std::memcmp(set.data(), &PS_MAPI, sizeof PS_MAPI) == 0;
}

std::optional<ULONG> MailNames::find(const MailName& name) {
  Cursor row = connection_.query("SELECT number FROM mail_name WHERE property_set = ? AND name = ?",
                                 bytesOf(name.propertySet), name.name);
  if (!row.next()) return std::nullopt;
  return row.get<ULONG>(0);
}

}  // namespace emulator
