#include "desktop/mail_write.h"

#include "desktop/item_text.h"
#include "desktop/local_time.h"
#include "desktop/mail_folder.h"
#include "desktop/mail_read.h"
#include "desktop/mail_recipients.h"
#include "desktop/mime_library.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr const char* kRead = "RO";
constexpr const char* kUnread = "O";

std::vector<MimeHeader> headersOf(const Message& message) {
  std::vector<MimeHeader> headers{{kStatusHeader, message.isRead ? kRead : kUnread},
                                  {kFolderHeader, nameOf(message.folder).name}};
  if (message.hasPlace) headers.push_back({kPlaceHeader, toUtf8(asOneLine(message.place))});
  if (!isNone(message.start)) headers.push_back({kStartHeader, spellTime(message.start)});
  if (!isNone(message.end)) headers.push_back({kEndHeader, spellTime(message.end)});
  return headers;
}

MimePart textPart(const std::u16string& text) {
  MimePart part;
  part.type = "text/plain";
  part.charset = "utf-8";
  part.data = toUtf8(replaceLineEnds(text, u"\n"));
  return part;
}

MimePart filePart(const AttachedFile& file) {
  MimePart part;
  part.type = "application/octet-stream";
  part.fileName = onOneLine(toUtf8(file.name));
  part.isAttachment = true;
  part.data.assign(file.data.begin(), file.data.end());
  return part;
}

MimePart contentOf(const Message& message) {
  if (message.attachments.empty()) return textPart(message.body);
  MimePart all;
  all.type = "multipart/mixed";
  all.parts.push_back(textPart(message.body));
  for (const AttachedFile& file : message.attachments) all.parts.push_back(filePart(file));
  return all;
}

}  // namespace

std::string mailText(const Message& message, const std::string& uid) {
  MimeMessage mail;
  mail.id = uid;
  if (isValid(message.delivered)) mail.date = instantOf(message.delivered);
  mail.from = addressesOfList(message.sender);
  mail.to = addressesOfList(message.to);
  mail.cc = addressesOfList(message.cc);
  mail.bcc = addressesOfList(message.bcc);
  mail.subject = toUtf8(asOneLine(message.subject));
  mail.headers = headersOf(message);
  mail.content = contentOf(message);
  return formatMime(mail);
}

}  // namespace desktop
