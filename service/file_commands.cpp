// Files move in chunks: append to the end, or read from an offset.

#include <algorithm>

#include "platform/errors.h"
#include "platform/files.h"
#include "platform/system.h"
#include "service/api_base.h"

namespace qorv {

namespace {

/// The answer to a chunk: result, a zero, the error word and the count of bytes that follow.
constexpr DWORD kChunkHeaderSize = 1 + 1 + 4 + 4;

/// A file that one command opens exclusively. It is closed also when the open failed, after the error word
/// was taken.
class ExclusiveFile {
 public:
  /// Reading asks for write access too: the desktop relies on a read-only file, or one in use, being refused.
  ExclusiveFile(LPCWSTR path, DWORD disposition)
      : handle_(CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ExclusiveFile(const ExclusiveFile&) = delete;
  ExclusiveFile& operator=(const ExclusiveFile&) = delete;
  ~ExclusiveFile() { CloseHandle(handle_); }

  [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

  bool append(const BYTE* data, DWORD size) {
    DWORD written = 0;
    SetFilePointer(handle_, 0, nullptr, FILE_END);
    return WriteFile(handle_, data, size, &written, nullptr) != FALSE;
  }

  /// The bytes read; none at an offset that can't be reached.
  DWORD readAt(DWORD offset, BYTE* buffer, DWORD size) {
    if (SetFilePointer(handle_, static_cast<LONG>(offset), nullptr, FILE_BEGIN) == INVALID_SET_FILE_POINTER)
      return 0;
    DWORD read = 0;
    ReadFile(handle_, buffer, size, &read, nullptr);
    return std::min(read, size);
  }

 private:
  HANDLE handle_;
};

}  // namespace

bool CQorvApiBase::AppendFile() {
  DWORD position = 0;
  skipTypeByte(position);
  const RequestText path = ReadString(requestCursor_, position);
  skipUnusedWord(position);
  const DWORD size = ReadDword(requestCursor_, position);
  const BYTE* data = ReadBytes(requestCursor_, position, size);
  bool written = false;
  // A request that was cut short touches no file, so the platform has no error for it.
  DWORD error = ERROR_INVALID_PARAMETER;
  if (!requestCut()) {
    ExclusiveFile file(path.get(), OPEN_ALWAYS);
    written = file.isOpen() && file.append(data, size);
    error = GetLastError();
  }
  writeStatus(written ? 1 : 0, 0);
  WriteDword(error);
  return written;
}

bool CQorvApiBase::ReadFileChunk() {
  DWORD position = 0;
  skipTypeByte(position);
  const RequestText path = ReadString(requestCursor_, position);
  skipUnusedWord(position);
  const DWORD offset = ReadDword(requestCursor_, position);
  const DWORD wanted = std::min(ReadDword(requestCursor_, position), room() - kChunkHeaderSize);

  // The bytes are read into the place where the reply will have them, behind the ten bytes of its header.
  BYTE* data = responseBuffer().reserve(responseLength() + kChunkHeaderSize, wanted);
  ExclusiveFile file(path.get(), OPEN_EXISTING);
  const DWORD read = file.isOpen() ? file.readAt(offset, data, wanted) : 0;
  writeStatus(file.isOpen() ? 1 : 0, 0);
  WriteDword(GetLastError());
  WriteDword(read);
  setResponseLength(responseLength() + read);
  return file.isOpen();
}

}  // namespace qorv
