// From the files of an attachment list into a message.

#include "mail/attachment_list.h"
#include "mail/message_attachments.h"
#include "mail/properties.h"
#include "service/unique_handle.h"

namespace qorv {

namespace {

constexpr DWORD kBlockSize = 1024;

bool copyData(HANDLE file, IStream& stream) {
  BYTE block[kBlockSize];
  DWORD read = 0;
  do {
    read = 0;
    if (!ReadFile(file, block, kBlockSize, &read, nullptr)) return false;
    ULONG written = 0;
    if (read > 0 && (FAILED(stream.Write(block, read, &written)) || written != read)) return false;
  } while (read == kBlockSize);
  return true;
}

/// The file is consumed, but only when all of it has arrived.
void takeFile(LPCWSTR path, IStream& stream) {
  bool isTaken = false;
  {
    const UniqueHandle file(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    isTaken = file && copyData(file.get(), stream);
  }
  if (isTaken) DeleteFileW(path);
}

void addAttachment(IMessage& message, ListedAttachment& listed) {
  ComPtr<IAttach> attachment;
  ULONG number = 0;
  if (FAILED(message.CreateAttach(nullptr, 0, &number, attachment.put())) || !attachment) return;
  SPropValue name{PR_ATTACH_FILENAME_W, 0, {.lpszW = listed.name.data()}};
  attachment->SetProps(1, &name, nullptr);
  const ComPtr<IStream> stream = openStream(*attachment, PR_ATTACH_DATA_BIN, MAPI_CREATE | MAPI_MODIFY);
  if (stream) takeFile(listed.path.c_str(), *stream);
}

}  // namespace

void addAttachments(IMessage& message, LPCWSTR text) {
  AttachmentList list(text);
  while (auto listed = list.next()) addAttachment(message, *listed);
}

}  // namespace qorv
