#include "mail/message_reader.h"

#include <vector>

#include "mail/mail_record.h"
#include "mail/mail_time.h"
#include "mail/message_attachments.h"
#include "mail/properties.h"
#include "mail/recipients.h"

namespace qorv {

namespace {

namespace tag = mail_tag;

struct FolderCode {
  DWORD FolderIds::*id;
  DWORD code;
};

// The last match counts.
constexpr FolderCode kFolderCodes[] = {
    {&FolderIds::outbox, folder_code::kOutbox},
    {&FolderIds::inbox, folder_code::kInbox},
    {&FolderIds::sentItems, folder_code::kSentItems},
    {&FolderIds::drafts, folder_code::kDrafts},
};

constexpr ULONG kTypeMask = 0xFFFF;

constexpr ULONG withType(ULONG propertyTag, ULONG type) {
  return (propertyTag & ~kTypeMask) | type;
}

/// No longer text than this fits a reply, so no more of a body is read.
constexpr std::uint64_t kMostBodyBytes = kResponseBufferSize;

}  // namespace

struct MessageReader::Property {
  ULONG tag;
  DWORD fieldTag;
  void (MessageReader::*write)(DWORD fieldTag, const SPropValue& value);
};

// The order of the request, which is the order of the fields. The first two have always been asked for and
// have no field. The property of the place comes last, under the tag that the store gives it.
const MessageReader::Property MessageReader::kProperties[] = {
    {PR_ENTRYID, 0, nullptr},
    {PR_MESSAGE_SIZE, 0, nullptr},
    {PR_MESSAGE_DELIVERY_TIME, tag::kDelivered, &MessageReader::writeTime},
    {PR_SUBJECT_W, tag::kSubject, &MessageReader::writeText},
    {PR_MESSAGE_FLAGS, tag::kFlags, &MessageReader::writeFlags},
    {PR_SENDER_EMAIL_ADDRESS_W, tag::kSender, &MessageReader::writeText},
    {PR_START_DATE, tag::kStart, &MessageReader::writeTime},
    {PR_END_DATE, tag::kEnd, &MessageReader::writeTime},
};

void MessageReader::writeText(DWORD fieldTag, const SPropValue& value) {
  if (value.Value.lpszW) reply_.WriteTaggedString(fieldTag, value.Value.lpszW);
}

void MessageReader::writeTime(DWORD fieldTag, const SPropValue& value) {
  reply_.WriteTaggedSystemTime(fieldTag, toRecordTime(value.Value.ft));
}

void MessageReader::writeFlags(DWORD fieldTag, const SPropValue& value) {
  const bool isRead = (value.Value.l & MSGFLAG_READ) != 0;
  reply_.WriteTaggedDword(fieldTag, folderCode_ | (isRead ? kReadFlag : 0));
}

DWORD MessageReader::findFolderCode() const {
  const PropertyValues values(message_, TagArray<1>{.tags = {PR_PARENT_ENTRYID}});
  const SBinary* parent = values.findBinary(PR_PARENT_ENTRYID);
  const auto parentId = parent ? objectId(*parent) : std::nullopt;
  DWORD code = 0;
  for (const FolderCode& folder : kFolderCodes) {
    if (parentId == folders_.*folder.id) code = folder.code;
  }
  return code;
}

ULONG MessageReader::findPlaceTag() const {
  // Libraries in the field are given the name in a buffer of this size.
  WCHAR name[256] = u"PR_SPLUS_WHERE";
  GUID set = PS_MAPI;
  MAPINAMEID place{&set, MNID_STRING, {.lpwstrName = name}};
  MAPINAMEID* names[] = {&place};
  MapiBuffer<SPropTagArray> tags;
  const HRESULT result = store_.GetIDsFromNames(1, names, MAPI_CREATE, tags.put());
  if (FAILED(result) || !tags || tags->cValues == 0) return 0;
  const ULONG found = tags->aulPropTag[0];
  const bool isResolved = (found & ~kTypeMask) != 0 && (found & kTypeMask) != PT_ERROR;
  return isResolved ? withType(found, PT_UNICODE) : 0;
}

void MessageReader::writeProperties() {
  TagArray<std::size(kProperties) + 1> asked;
  std::ranges::transform(kProperties, asked.tags, &Property::tag);
  const ULONG placeTag = findPlaceTag();
  asked.tags[std::size(kProperties)] = placeTag;
  if (placeTag == 0) --asked.count;

  bool hasPlace = false;
  {
    const PropertyValues values(message_, asked.get());
    for (const SPropValue& value : values.all()) {
      if (placeTag != 0 && value.ulPropTag == placeTag) {
        hasPlace = true;
        writeText(tag::kPlace, value);
      }
      const auto* property = std::ranges::find(kProperties, value.ulPropTag, &Property::tag);
      if (property != std::ranges::end(kProperties) && property->write) {
        (this->*property->write)(property->fieldTag, value);
      }
    }
  }
  reply_.WriteTaggedDword(tag::kHasPlace, hasPlace ? 1 : 0);
}

void MessageReader::writeBody() {
  const ComPtr<IStream> stream = openStream(message_, PR_BODY_W, MAPI_UNICODE);
  STATSTG statistics{};
  if (!stream || FAILED(stream->Stat(&statistics, STATFLAG_NONAME))) return;
  const auto size = static_cast<ULONG>(std::min<std::uint64_t>(statistics.cbSize, kMostBodyBytes));
  if (size == 0) return;
  // Half a character more for an odd last byte, and a terminator.
  std::vector<WCHAR> text(size / sizeof(WCHAR) + 2);
  ULONG read = 0;
  if (SUCCEEDED(stream->Read(text.data(), size, &read))) reply_.WriteTaggedString(tag::kBody, text.data());
}

void MessageReader::read() {
  folderCode_ = findFolderCode();
  writeProperties();
  writeBody();
  writeRecipients(message_, reply_);
  writeAttachments(message_, reply_);
}

}  // namespace qorv
