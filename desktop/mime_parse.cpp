// Reading a mail with the MIME library.
#include <algorithm>

#include "desktop/mime_addresses.h"
#include "desktop/mime_handles.h"
#include "desktop/mime_library.h"

namespace desktop {

namespace {

std::string bytesOf(GMimeStream& memory) {
  const GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(&memory));
  return {reinterpret_cast<const char*>(bytes->data), bytes->len};
}

MimeHandle<GMimeStream> memoryStream() {
  return MimeHandle<GMimeStream>(g_mime_stream_mem_new());
}

std::string decodedData(GMimePart& part) {
  GMimeDataWrapper* content = g_mime_part_get_content(&part);
  if (content == nullptr) return {};
  const auto stream = memoryStream();
  g_mime_data_wrapper_write_to_stream(content, stream.get());
  return bytesOf(*stream);
}

std::string wholeText(GMimeMessage* message) {
  if (message == nullptr) return {};
  const auto stream = memoryStream();
  g_mime_object_write_to_stream(GMIME_OBJECT(message), nullptr, stream.get());
  return bytesOf(*stream);
}

std::string typeOf(GMimeObject& object) {
  const GlibText type(g_mime_content_type_get_mime_type(g_mime_object_get_content_type(&object)));
  std::string lower = mimeText(type.get());
  std::transform(lower.begin(), lower.end(), lower.begin(), g_ascii_tolower);
  return lower;
}

/// Programs put the name of a file that isn't one into either header.
std::string fileNameOf(GMimeObject& object) {
  const char* name = g_mime_object_get_content_disposition_parameter(&object, "filename");
  if (name == nullptr) name = g_mime_object_get_content_type_parameter(&object, "name");
  return mimeText(name);
}

/// Where no boundary parts a text, it is read as one.
void takeWhole(MimePart& part, GMimeMultipart& whole) {
  part.type = "text/plain";
  part.data = mimeText(g_mime_multipart_get_prologue(&whole));
}

MimePart readPart(GMimeObject& object) {
  MimePart part;
  part.type = typeOf(object);
  part.charset = mimeText(g_mime_object_get_content_type_parameter(&object, "charset"));
  part.fileName = fileNameOf(object);
  const std::string disposition = mimeText(g_mime_object_get_disposition(&object));
  part.isAttachment = g_ascii_strcasecmp(disposition.c_str(), GMIME_DISPOSITION_ATTACHMENT) == 0;
  if (GMIME_IS_MULTIPART(&object)) {
    GMimeMultipart* whole = GMIME_MULTIPART(&object);
    const int count = g_mime_multipart_get_count(whole);
    for (int i = 0; i < count; ++i) part.parts.push_back(readPart(*g_mime_multipart_get_part(whole, i)));
    if (count == 0) takeWhole(part, *whole);
  } else if (GMIME_IS_MESSAGE_PART(&object)) {
    part.data = wholeText(g_mime_message_part_get_message(GMIME_MESSAGE_PART(&object)));
  } else if (GMIME_IS_PART(&object)) {
    part.data = decodedData(*GMIME_PART(&object));
  }
  return part;
}

std::vector<MimeHeader> readHeaders(GMimeObject& message) {
  std::vector<MimeHeader> headers;
  GMimeHeaderList* list = g_mime_object_get_header_list(&message);
  for (int i = 0; i < g_mime_header_list_get_count(list); ++i) {
    GMimeHeader* header = g_mime_header_list_get_header_at(list, i);
    headers.push_back({mimeText(g_mime_header_get_name(header)), mimeText(g_mime_header_get_value(header))});
  }
  return headers;
}

MimeMessage readMessage(GMimeMessage& message) {
  const auto addresses = [&](GMimeAddressType type) {
    return addressesIn(g_mime_message_get_addresses(&message, type));
  };
  MimeMessage read;
  read.id = mimeText(g_mime_message_get_message_id(&message));
  if (GDateTime* date = g_mime_message_get_date(&message)) read.date = g_date_time_to_unix(date);
  read.from = addresses(GMIME_ADDRESS_TYPE_FROM);
  read.to = addresses(GMIME_ADDRESS_TYPE_TO);
  read.cc = addresses(GMIME_ADDRESS_TYPE_CC);
  read.bcc = addresses(GMIME_ADDRESS_TYPE_BCC);
  read.subject = mimeText(g_mime_message_get_subject(&message));
  read.headers = readHeaders(*GMIME_OBJECT(&message));
  if (GMimeObject* content = g_mime_message_get_mime_part(&message)) read.content = readPart(*content);
  return read;
}

}  // namespace

MimeMessage parseMime(std::string_view text) {
  startMimeLibrary();
  const MimeHandle<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(text.data(), text.size()));
  const MimeHandle<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
  const MimeHandle<GMimeMessage> message(
      g_mime_parser_construct_message(parser.get(), lenientOptions().get()));
  return message ? readMessage(*message) : MimeMessage();
}

}  // namespace desktop
