#include "mail/recipients.h"

#include <algorithm>
#include <limits>
#include <string>

#include "mail/address_list.h"
#include "mail/mail_record.h"
#include "mail/properties.h"

namespace qorv {

namespace {

constexpr WCHAR kSeparator = u';';
constexpr WCHAR kComma = u',';
constexpr WCHAR kBlank = u' ';
constexpr LONG kMostRowsRead = 255;

struct RecipientKind {
  LONG type;
  DWORD tag;
  RequestText PendingMessage::*text;
};

constexpr RecipientKind kKinds[] = {
    {MAPI_TO, mail_tag::kTo, &PendingMessage::to},
    {MAPI_CC, mail_tag::kCc, &PendingMessage::cc},
    {MAPI_BCC, mail_tag::kBcc, &PendingMessage::bcc},
};

std::u16string_view viewOf(const RequestText& text) {
  return {text.get(), text.length()};
}

/// The text of a kind; without a To text there is no Bcc either, as it has always been.
std::u16string_view textToSend(const PendingMessage& pending, const RecipientKind& kind) {
  if (kind.type == MAPI_BCC && !pending.to) return {};
  return viewOf(pending.*kind.text);
}

/// An address list with its values and texts in one block of local memory: the list and its entries, the
/// values, the texts.
class RecipientBlock {
 public:
  static constexpr ULONG kValuesPerEntry = 3;

  /// Empty when there is no room. On the device it takes 60 bytes an entry, 16 in front and the characters.
  RecipientBlock(std::size_t entries, std::size_t characters) {
    const std::uint64_t size =
        std::uint64_t{entries} * (sizeof(ADRENTRY) + kValuesPerEntry * sizeof(SPropValue)) + sizeof(ADRLIST) +
        std::uint64_t{characters} * sizeof(WCHAR);
    if (size > std::numeric_limits<LONG>::max()) return;
    block_ = LocalBlock(static_cast<UINT>(size));
    if (!block_) return;
    values_ = placeFor<SPropValue>(offsetof(ADRLIST, aEntries) + entries * sizeof(ADRENTRY));
    texts_ = reinterpret_cast<WCHAR*>(values_ + entries * kValuesPerEntry);
  }

  explicit operator bool() const { return static_cast<bool>(block_); }
  [[nodiscard]] ADRLIST* list() const { return static_cast<ADRLIST*>(block_.get()); }

  /// `addressType` must outlive the block.
  void add(LONG type, LPWSTR addressType, std::u16string_view address) {
    ADRENTRY* entries = list()->aEntries;
    entries[list()->cEntries++] = {0, kValuesPerEntry, values_};
    *values_++ = {PR_RECIPIENT_TYPE, 0, {.l = type}};
    *values_++ = {PR_ADDRTYPE_W, 0, {.lpszW = addressType}};
    *values_++ = {PR_EMAIL_ADDRESS_W, 0, {.lpszW = texts_}};
    texts_ = std::ranges::copy(address, texts_).out + 1;
  }

 private:
  template <typename T>
  [[nodiscard]] T* placeFor(std::size_t at) const {
    const std::size_t aligned = (at + alignof(T) - 1) / alignof(T) * alignof(T);
    return reinterpret_cast<T*>(static_cast<BYTE*>(block_.get()) + aligned);
  }

  LocalBlock block_;
  SPropValue* values_ = nullptr;  ///< where the next entry's values go
  WCHAR* texts_ = nullptr;        ///< where the next text goes
};

}  // namespace

std::vector<std::u16string_view> splitRecipients(std::u16string_view text) {
  std::vector<std::u16string_view> addresses;
  while (!text.empty()) {
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(kBlank)));
    const std::u16string_view address = text.substr(0, text.find(kSeparator));
    if (!address.empty()) addresses.push_back(address);
    text.remove_prefix(std::min(text.size(), address.size() + 1));
  }
  return addresses;
}

std::size_t mostRecipients(std::u16string_view text) {
  if (text.empty()) return 0;
  const auto separates = [](WCHAR character) { return character == kSeparator || character == kComma; };
  return 1 + static_cast<std::size_t>(std::ranges::count_if(text, separates));
}

HRESULT addRecipients(IMessage& message, const PendingMessage& pending) {
  std::size_t entries = 0;
  std::size_t characters = 0;
  for (const RecipientKind& kind : kKinds) {
    const std::u16string_view text = textToSend(pending, kind);
    entries += mostRecipients(text);
    characters += text.size() + 1;
  }
  if (entries == 0) return S_OK;
  RecipientBlock block(entries, characters);
  if (!block) return E_OUTOFMEMORY;
  WCHAR addressType[] = u"SMTP";
  for (const RecipientKind& kind : kKinds) {
    for (const auto address : splitRecipients(textToSend(pending, kind))) {
      block.add(kind.type, addressType, address);
    }
  }
  if (block.list()->cEntries == 0) return S_OK;
  return message.ModifyRecipients(MODRECIP_ADD, block.list());
}

void writeRecipients(IMessage& message, ReplyWriter& reply) {
  ComPtr<IMAPITable> table;
  if (FAILED(message.GetRecipientTable(MAPI_UNICODE, table.put())) || !table) return;
  AddressList lists[std::size(kKinds)];
  {
    const RowSet found(*table, kMostRowsRead);
    for (const SRow& row : found.rows()) {
      const LPCWSTR address = textOf(findValue(valuesOf(row), PR_EMAIL_ADDRESS_W));
      const SPropValue* type = findValue(valuesOf(row), PR_RECIPIENT_TYPE);
      if (!address || !type) continue;
      const auto* kind = std::ranges::find(kKinds, type->Value.l, &RecipientKind::type);
      if (kind != std::ranges::end(kKinds)) lists[kind - kKinds].append(address);
    }
  }
  for (std::size_t i = 0; i < std::size(kKinds); ++i) {
    if (const LPCWSTR text = lists[i].text()) reply.WriteTaggedString(kKinds[i].tag, text);
  }
}

}  // namespace qorv
