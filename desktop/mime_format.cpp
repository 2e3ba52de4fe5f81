// Writing a mail with the MIME library.
#include <ctime>

#include "desktop/mime_addresses.h"
#include "desktop/mime_handles.h"
#include "desktop/mime_library.h"

namespace desktop {

namespace {

/// No encoded part can have a line with it: "=" and "_" don't meet in quoted-printable, and are none of base64.
constexpr const char* kBoundary = "=_qorv";

DateHandle localDate(std::time_t instant) {
  tzset();  // localtime_r needn't look at TZ itself
  std::tm clock{};
  localtime_r(&instant, &clock);
  const TimeZoneHandle zone(g_time_zone_new_offset(static_cast<gint32>(clock.tm_gmtoff)));
  const DateHandle utc(g_date_time_new_from_unix_utc(instant));
  return DateHandle(utc ? g_date_time_to_timezone(utc.get(), zone.get()) : nullptr);
}

void setContent(GMimePart& part, const std::string& data, GMimeContentEncoding encoding) {
  const MimeHandle<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(data.data(), data.size()));
  const MimeHandle<GMimeDataWrapper> content(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
  g_mime_part_set_content(&part, content.get());
  g_mime_part_set_content_encoding(&part, encoding);
}

MimeHandle<GMimeObject> makePart(const MimePart& part);

MimeHandle<GMimeObject> makeMultipart(const MimePart& part, const std::string& subtype) {
  MimeHandle<GMimeMultipart> made(g_mime_multipart_new_with_subtype(subtype.c_str()));
  g_mime_multipart_set_boundary(made.get(), kBoundary);
  for (const MimePart& inner : part.parts) g_mime_multipart_add(made.get(), makePart(inner).get());
  return MimeHandle<GMimeObject>(GMIME_OBJECT(made.release()));
}

MimeHandle<GMimeObject> makePart(const MimePart& part) {
  const std::size_t slash = part.type.find('/');
  const std::string type = part.type.substr(0, slash);
  const std::string subtype = part.type.substr(slash + 1);
  if (type == "multipart") return makeMultipart(part, subtype);
  MimeHandle<GMimePart> made(g_mime_part_new_with_type(type.c_str(), subtype.c_str()));
  GMimeObject* object = GMIME_OBJECT(made.get());
  if (!part.charset.empty())
    g_mime_object_set_content_type_parameter(object, "charset", part.charset.c_str());
  if (part.isAttachment) {
    g_mime_object_set_disposition(object, GMIME_DISPOSITION_ATTACHMENT);
    g_mime_part_set_filename(made.get(), part.fileName.c_str());
    setContent(*made, part.data, GMIME_CONTENT_ENCODING_BASE64);
  } else {
    setContent(*made, part.data, GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
  }
  made.release();
  return MimeHandle<GMimeObject>(object);
}

void addAddresses(GMimeMessage& message, GMimeAddressType type, const std::vector<MimeAddress>& addresses) {
  InternetAddressList* list = g_mime_message_get_addresses(&message, type);
  for (const MimeAddress& address : addresses) internet_address_list_add(list, makeAddress(address).get());
}

/// The library ends every message with a line end. A text that has none says so with a soft one, as the library
/// does itself behind a blank.
void keepOpenEnd(std::string& written, const MimePart& content) {
  const bool isOpen = content.parts.empty() && !content.data.empty() && !content.data.ends_with('\n') &&
                      !written.ends_with("=\n");
  if (isOpen && written.ends_with('\n')) written.insert(written.size() - 1, "=");
}

}  // namespace

std::string formatMime(const MimeMessage& message) {
  startMimeLibrary();
  constexpr gboolean kUsualOrder = TRUE;
  const MimeHandle<GMimeMessage> made(g_mime_message_new(kUsualOrder));
  GMimeObject* object = GMIME_OBJECT(made.get());
  if (!message.id.empty()) g_mime_message_set_message_id(made.get(), message.id.c_str());
  if (message.date) {
    if (const DateHandle date = localDate(*message.date)) g_mime_message_set_date(made.get(), date.get());
  }
  addAddresses(*made, GMIME_ADDRESS_TYPE_FROM, message.from);
  addAddresses(*made, GMIME_ADDRESS_TYPE_TO, message.to);
  addAddresses(*made, GMIME_ADDRESS_TYPE_CC, message.cc);
  addAddresses(*made, GMIME_ADDRESS_TYPE_BCC, message.bcc);
  g_mime_message_set_subject(made.get(), message.subject.c_str(), "utf-8");
  for (const MimeHeader& header : message.headers) {
    g_mime_object_set_header(object, header.name.c_str(), header.value.c_str(), "utf-8");
  }
  g_mime_message_set_mime_part(made.get(), makePart(message.content).get());
  std::string written = takeMimeText(g_mime_object_to_string(object, nullptr));
  keepOpenEnd(written, message.content);
  return written;
}

}  // namespace desktop
