#include "emulator/messaging/messaging_object.h"

namespace emulator {
namespace {

AnsweredRow allValues(const Properties& properties) {
  AnsweredRow row;
  for (const PropertyTag tag : properties.tags) {
    MailValue value = properties.lookup(tag);
    if (!std::holds_alternative<MissingValue>(value)) row.push_back({tag, std::move(value)});
  }
  return row;
}

AnsweredRow askedValues(const Properties& properties, const SPropTagArray& tags) {
  AnsweredRow row;
  for (const PropertyTag tag : std::span(static_cast<const PropertyTag*>(tags.aulPropTag), tags.cValues)) {
    row.push_back({tag, properties.lookup(tag)});
  }
  return row;
}

bool isMissing(const AnsweredValue& answered) {
  return std::holds_alternative<MissingValue>(answered.value);
}

/// Nothing for what is no name.
std::optional<MailName> nameOf(const MAPINAMEID* name) {
  if (name == nullptr || name->lpguid == nullptr) return std::nullopt;
  if (name->ulKind == MNID_ID) return MailName{*name->lpguid, name->Kind.lID};
  if (name->ulKind != MNID_STRING || name->Kind.lpwstrName == nullptr) return std::nullopt;
  return MailName{*name->lpguid, std::u16string(name->Kind.lpwstrName)};
}

}  // namespace

HRESULT answerProperties(MailContext& context, const SPropTagArray* tags, const Properties& properties,
                         ULONG* count, SPropValue** values) {
  if (tags != nullptr && (tags->cValues == 0 || tags->cValues > kMostTags)) return E_INVALIDARG;
  const AnsweredRow row = tags == nullptr ? allValues(properties) : askedValues(properties, *tags);
  *values = context.buffers.values(row);
  if (*values == nullptr) return MAPI_E_NOT_ENOUGH_MEMORY;
  *count = static_cast<ULONG>(row.size());
  return std::ranges::any_of(row, isMissing) ? MAPI_W_ERRORS_RETURNED : S_OK;
}

HRESULT answerNames(MailContext& context, std::span<MAPINAMEID* const> names, bool make,
                    SPropTagArray** tags) {
  if (tags == nullptr) return E_INVALIDARG;
  *tags = nullptr;
  if (names.empty() || names.size() > kMostTags) return E_INVALIDARG;
  std::vector<MailName> sought;
  for (const MAPINAMEID* given : names) {
    const auto name = nameOf(given);
    if (!name) return E_INVALIDARG;
    sought.push_back(*name);
  }
  std::vector<PropertyTag> found;
  bool complete = true;
  for (const MailName& name : sought) {
    const auto number = context.names.numberOf(name, make);
    found.push_back(number ? propertyTag(*number, PT_UNSPECIFIED) : propertyTag(0, PT_ERROR));
    complete = complete && number;
  }
  *tags = context.buffers.tags(found);
  if (*tags == nullptr) return MAPI_E_NOT_ENOUGH_MEMORY;
  return complete ? S_OK : MAPI_W_ERRORS_RETURNED;
}

}  // namespace emulator
