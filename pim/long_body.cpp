#include "pim/long_body.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"
#include "service/com_ptr.h"

namespace qorv {

namespace {

/// The room is one byte a character, without one for the terminator: a conversion that fills it to the brim
/// is reported as too small, and what it stored counts all the same, up to the first NUL.
std::vector<char> toAnsi(LPCWSTR text, std::size_t length) {
  std::vector<char> bytes((length + 1) * sizeof(WCHAR));
  WideCharToMultiByte(CP_ACP, 0, text, -1, bytes.data(), static_cast<int>(length), nullptr, nullptr);
  bytes.erase(std::ranges::find(bytes, '\0'), bytes.end());
  return bytes;
}

bool writeStream(IItem& item, const std::vector<char>& bytes) {
  ComPtr<IStream> stream;
  if (FAILED(item.OpenProperty(PIMPR_BODY_BINARY, GENERIC_WRITE, stream.put())) || !stream) return false;
  ULONG written = 0;
  if (FAILED(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written))) return false;
  return SUCCEEDED(stream->Commit(0)) && SUCCEEDED(item.Save());
}

}  // namespace

bool WriteLongBody(IPOutlookApp& application, LPCWSTR text, LONG oid) {
  const std::size_t length = text ? std::char_traits<WCHAR>::length(text) : 0;
  if (length < kLongBodyLength) return true;
  const std::vector<char> bytes = toAnsi(text, length);
  if (bytes.empty()) return false;
  ComPtr<IDispatch> any;
  if (FAILED(application.GetItemFromOid(oid, any.put())) || !any) return false;
  const auto item = queryInterface<IItem>(*any);
  return item && writeStream(*item, bytes);
}

}  // namespace qorv
