// From a message's attachments into temporary files.

#include <memory>
#include <new>
#include <optional>
#include <string>

#include "mail/mail_record.h"
#include "mail/message_attachments.h"
#include "mail/properties.h"
#include "platform/windows.h"
#include "service/unique_handle.h"

namespace qorv {

namespace {

constexpr LONG kMostRowsRead = 255;
/// The length of a temporary folder's path that is taken for none.
constexpr DWORD kRootLength = 3;

struct Data {
  std::unique_ptr<BYTE[]> bytes;
  DWORD size = 0;
};

/// Nothing unless all of it could be read.
std::optional<Data> readData(IStream& stream) {
  STATSTG statistics{};
  if (FAILED(stream.Stat(&statistics, STATFLAG_NONAME))) return std::nullopt;
  if (FAILED(stream.Seek(0, STREAM_SEEK_SET, nullptr))) return std::nullopt;
  const std::uint64_t size = statistics.cbSize;
  if (size > INT32_MAX) return std::nullopt;
  Data data{std::unique_ptr<BYTE[]>(new (std::nothrow) BYTE[static_cast<std::size_t>(size)]),
            static_cast<DWORD>(size)};
  ULONG read = 0;
  if (!data.bytes || FAILED(stream.Read(data.bytes.get(), data.size, &read)) || read != data.size) {
    return std::nullopt;
  }
  return data;
}

/// The path of a new, empty file; empty when the device gives none, which its user is told.
std::u16string makeTemporaryFile() {
  WCHAR folder[MAX_PATH]{};
  if (GetTempPathW(MAX_PATH, folder) == kRootLength) {
    // A path of three characters was a drive's root where this test comes from.
    folder[0] = u'.';
    folder[1] = u'\0';
  }
  WCHAR name[MAX_PATH]{};
  if (GetTempFileNameW(folder, u"QRV", 0, name) == 0) {
    MessageBoxW(nullptr, u"GetTempFileName\n failed", u"CCEMail2", MB_SETFOREGROUND);
    return {};
  }
  return name;
}

bool storeData(LPCWSTR path, const Data& data) {
  const UniqueHandle file(CreateFileW(path, GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  return file && WriteFile(file.get(), data.bytes.get(), data.size, &written, nullptr) &&
         written == data.size;
}

/// The path of a file with the data; empty when there is none.
std::u16string store(const Data& data) {
  std::u16string path = makeTemporaryFile();
  if (storeData(path.c_str(), data)) return path;
  // The desktop would take the empty file for the attachment.
  if (!path.empty()) DeleteFileW(path.c_str());
  return {};
}

void exportAttachment(IMessage& message, ULONG number, std::u16string& list) {
  ComPtr<IAttach> attachment;
  if (FAILED(message.OpenAttach(number, nullptr, 0, attachment.put())) || !attachment) return;
  const ComPtr<IStream> stream = openStream(*attachment, PR_ATTACH_DATA_BIN, 0);
  const auto data = stream ? readData(*stream) : std::nullopt;
  if (!data) return;
  const std::u16string path = store(*data);
  const PropertyValues values(*attachment, TagArray<1>{.tags = {PR_ATTACH_FILENAME_W}});
  const LPCWSTR name = textOf(values.find(PR_ATTACH_FILENAME_W));
  if (path.empty() || !name || *name == u'\0') return;
  list.append(path).append(u"\n").append(name).append(u"\n");
}

}  // namespace

void writeAttachments(IMessage& message, ReplyWriter& reply) {
  ComPtr<IMAPITable> table;
  if (FAILED(message.GetAttachmentTable(MAPI_UNICODE, table.put())) || !table) return;
  RowSet found(*table, kMostRowsRead);
  const bool hasAttachments = !found.rows().empty();
  std::u16string list;
  for (const SRow& row : found.rows()) {
    if (const SPropValue* number = findValue(valuesOf(row), PR_ATTACH_NUM)) {
      exportAttachment(message, number->Value.ul, list);
    }
  }
  found.reset();
  if (hasAttachments) reply.WriteTaggedString(mail_tag::kAttachments, list.c_str());
}

}  // namespace qorv
