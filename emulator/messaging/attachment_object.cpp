#include "emulator/messaging/attachment_object.h"

#include "emulator/messaging/content_stream.h"
#include "emulator/messaging/given_values.h"

namespace emulator {
namespace {

using AttachmentProperty = ReadableProperty<AttachmentView>;

constexpr std::array kAttachmentProperties{
    AttachmentProperty{
        PR_ATTACH_NUM,
        [](const AttachmentView& view) -> MailValue { return static_cast<LONG>(view.attachment.number); }},
    AttachmentProperty{PR_ATTACH_FILENAME_W,
                       [](const AttachmentView& view) -> MailValue { return view.attachment.name; }},
    AttachmentProperty{PR_ATTACH_SIZE,
                       [](const AttachmentView& view) -> MailValue { return static_cast<LONG>(view.size); }},
    AttachmentProperty{
        PR_ATTACH_DATA_BIN,
        [](const AttachmentView& view) { return view.attachment.data ? streamOnly() : noValue(); }},
};

/// The columns: all but the data.
constexpr std::span kAttachmentColumns = std::span(kAttachmentProperties).first<3>();

}  // namespace

std::span<const ReadableProperty<AttachmentView>> attachmentProperties() {
  return kAttachmentColumns;
}

AttachmentView viewOf(MailContext& context, const MailAttachment& attachment) {
  const auto size = attachment.data ? context.mailbox.contents().size(*attachment.data) : std::nullopt;
  return {attachment, size.value_or(0)};
}

AttachmentObject::AttachmentObject(MailContext& context, std::int64_t message, ULONG number, bool writable)
    : PropertyObject(context, ModelClass::Attachment),
      message_(message),
      number_(number),
      writable_(writable) {}

HRESULT AttachmentObject::OpenProperty(ULONG tag, LPCIID iid, ULONG, ULONG flags, IUnknown** object) {
  if (object == nullptr) return E_INVALIDARG;
  *object = nullptr;
  if (!asksFor(tag, PR_ATTACH_DATA_BIN)) return MAPI_E_NOT_FOUND;
  return atBoundary([&] {
    const auto attachment = load();
    if (!attachment) return MAPI_E_NOT_FOUND;
    const auto make = [&] { return context().mailbox.dataOf(*attachment); };
    return openContent(context(), {attachment->data, message_, writable_}, make, iid, flags, object);
  });
}

HRESULT AttachmentObject::SetProps(ULONG count, SPropValue* values, SPropProblemArray** problems) {
  if (!writable_) return MAPI_E_NO_ACCESS;
  return atBoundary([&] {
    const auto attachment = load();
    if (!attachment) return MAPI_E_NOT_FOUND;
    return takeValues(count, values, problems, [&](const SPropValue& value) {
      if (value.ulPropTag != PR_ATTACH_FILENAME_W) return false;
      context().mailbox.nameAttachment(*attachment, value.Value.lpszW);
      return true;
    });
  });
}

std::optional<Properties> AttachmentObject::properties() {
  const auto attachment = load();
  if (!attachment) return std::nullopt;
  const auto read = [view = viewOf(context(), *attachment)](PropertyTag asked) {
    return readProperty<AttachmentView>(kAttachmentProperties, view, asked);
  };
  return Properties{tagsOf<AttachmentView>(kAttachmentProperties), read};
}

std::optional<MailAttachment> AttachmentObject::load() {
  return context().mailbox.attachment(message_, number_);
}

}  // namespace emulator
