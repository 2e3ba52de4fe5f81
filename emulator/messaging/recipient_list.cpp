#include "emulator/messaging/recipient_list.h"

#include <algorithm>
#include <array>

#include "emulator/messaging/given_values.h"
#include "platform/errors.h"

namespace emulator {
namespace {

/// A list that claims more is none.
constexpr ULONG kMostEntries = 0x100000;

using RecipientProperty = ReadableProperty<RecipientRow>;

constexpr std::array kRecipientProperties{
    RecipientProperty{PR_ROWID, [](const RecipientRow& row) -> MailValue { return row.place; }},
    RecipientProperty{PR_RECIPIENT_TYPE,
                      [](const RecipientRow& row) -> MailValue { return row.recipient.type; }},
    RecipientProperty{PR_ADDRTYPE_W,
                      [](const RecipientRow&) -> MailValue { return std::u16string(u"SMTP"); }},
    RecipientProperty{PR_EMAIL_ADDRESS_W,
                      [](const RecipientRow& row) -> MailValue { return row.recipient.address; }},
};

/// What an entry says.
struct Entry {
  std::optional<LONG> place;
  LONG type = MAPI_TO;
  std::optional<std::u16string> address;
};

std::optional<Entry> readEntry(const ADRENTRY& given) {
  if (given.cValues > kMostTags || (given.rgPropVals == nullptr && given.cValues != 0)) return std::nullopt;
  Entry entry;
  for (const SPropValue& value : std::span(given.rgPropVals, given.cValues)) {
    if (!isReadable(value)) return std::nullopt;
    if (value.ulPropTag == PR_ROWID) entry.place = value.Value.l;
    if (value.ulPropTag == PR_RECIPIENT_TYPE) entry.type = value.Value.l;
    if (value.ulPropTag == PR_EMAIL_ADDRESS_W) entry.address = value.Value.lpszW;
  }
  const bool isKnown = entry.type >= MAPI_TO && entry.type <= MAPI_BCC;
  return isKnown ? std::optional(entry) : std::nullopt;
}

std::optional<std::vector<Entry>> readEntries(const ADRLIST& list) {
  std::vector<Entry> entries;
  for (const ADRENTRY& given : std::span(static_cast<const ADRENTRY*>(list.aEntries), list.cEntries)) {
    auto entry = readEntry(given);
    if (!entry) return std::nullopt;
    entries.push_back(std::move(*entry));
  }
  return entries;
}

HRESULT append(std::vector<MailRecipient>& recipients, const std::vector<Entry>& entries) {
  for (const Entry& entry : entries) {
    if (!entry.address) return E_INVALIDARG;
    recipients.push_back({entry.type, *entry.address});
  }
  return S_OK;
}

bool isPlace(const Entry& entry, const std::vector<MailRecipient>& recipients) {
  return entry.place && *entry.place >= 0 && static_cast<std::size_t>(*entry.place) < recipients.size();
}

HRESULT replaceRows(std::vector<MailRecipient>& recipients, const std::vector<Entry>& entries) {
  for (const Entry& entry : entries) {
    if (!isPlace(entry, recipients)) return MAPI_E_NOT_FOUND;
    if (!entry.address) return E_INVALIDARG;
    recipients[static_cast<std::size_t>(*entry.place)] = {entry.type, *entry.address};
  }
  return S_OK;
}

HRESULT removeRows(std::vector<MailRecipient>& recipients, const std::vector<Entry>& entries) {
  std::vector<bool> removed(recipients.size());
  for (const Entry& entry : entries) {
    if (!isPlace(entry, recipients)) return MAPI_E_NOT_FOUND;
    removed[static_cast<std::size_t>(*entry.place)] = true;
  }
  std::vector<MailRecipient> kept;
  for (std::size_t i = 0; i < recipients.size(); ++i) {
    if (!removed[i]) kept.push_back(recipients[i]);
  }
  recipients = std::move(kept);
  return S_OK;
}

}  // namespace

std::span<const ReadableProperty<RecipientRow>> recipientProperties() {
  return kRecipientProperties;
}

std::vector<RecipientRow> recipientRows(const std::vector<MailRecipient>& recipients) {
  std::vector<RecipientRow> rows;
  for (const MailRecipient& recipient : recipients) {
    rows.push_back({static_cast<LONG>(rows.size()), recipient});
  }
  return rows;
}

HRESULT modifyRecipients(std::vector<MailRecipient>& recipients, ULONG flags, const ADRLIST* list) {
  if (list == nullptr || list->cEntries > kMostEntries) return E_INVALIDARG;
  const auto entries = readEntries(*list);
  if (!entries) return E_INVALIDARG;
  std::vector<MailRecipient> changed = flags == 0 ? std::vector<MailRecipient>() : recipients;
  HRESULT result = E_INVALIDARG;
  if (flags == 0 || flags == MODRECIP_ADD) result = append(changed, *entries);
  if (flags == MODRECIP_MODIFY) result = replaceRows(changed, *entries);
  if (flags == MODRECIP_REMOVE) result = removeRows(changed, *entries);
  if (SUCCEEDED(result)) recipients = std::move(changed);
  return result;
}

}  // namespace emulator
