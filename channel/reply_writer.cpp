#include "channel/reply_writer.h"

#include <string>

namespace qorv {

namespace {

/// Bytes of the text with its NUL, or all ones for a text that no buffer holds.
DWORD textSize(const WCHAR* text) {
  const std::size_t size = (std::char_traits<WCHAR>::length(text) + 1) * sizeof(WCHAR);
  return size <= kResponseBufferSize ? static_cast<DWORD>(size) : ~DWORD{0};
}

}  // namespace

bool ReplyWriter::fitsLimit(DWORD byteCount) {
  // The count word and the field id in front of the text have never been part of this test.
  const bool fits =
      responseLength_ <= ResponseBufferLimit && byteCount <= ResponseBufferLimit - responseLength_;
  if (!fits) overflowed_ = true;
  return fits;
}

bool ReplyWriter::fitsBuffer(DWORD size) {
  const bool fits = ResponseBuffer::fits(responseLength_, size);
  if (!fits) overflowed_ = bufferFull_ = true;
  return fits;
}

bool ReplyWriter::WriteBytes(std::span<const BYTE> bytes) {
  if (!fitsBuffer(static_cast<DWORD>(bytes.size()))) return false;
  buffer_->write(responseLength_, bytes);
  responseLength_ += static_cast<DWORD>(bytes.size());
  return true;
}

bool ReplyWriter::skip(DWORD size) {
  if (!fitsBuffer(size)) return false;
  responseLength_ += size;
  return true;
}

bool ReplyWriter::WriteByte(BYTE value) {
  return WriteBytes({&value, 1});
}

bool ReplyWriter::WriteDword(DWORD value) {
  std::array<BYTE, sizeof(DWORD)> bytes{};
  storeDword(bytes.data(), value);
  return WriteBytes(bytes);
}

void ReplyWriter::writeText(const WCHAR* text, DWORD byteCount) {
  WriteDword(byteCount);
  BYTE* at = buffer_->reserve(responseLength_, byteCount);
  for (DWORD i = 0; i < byteCount; i += sizeof(WCHAR)) storeWord(at + i, *text++);
  responseLength_ += byteCount;
}

bool ReplyWriter::WriteString(const WCHAR* text) {
  const DWORD byteCount = textSize(text);
  if (!fitsLimit(byteCount)) return false;
  writeText(text, byteCount);
  return true;
}

bool ReplyWriter::WriteTaggedString(DWORD field, const WCHAR* text) {
  const DWORD byteCount = textSize(text);
  if (!fitsLimit(byteCount)) return false;
  WriteDword(field);
  writeText(text, byteCount);
  ++listHeader_.fieldCount;
  return true;
}

bool ReplyWriter::WriteTaggedDword(DWORD field, DWORD value) {
  std::array<BYTE, 2 * sizeof(DWORD)> bytes{};
  storeDword(bytes.data(), field);
  storeDword(&bytes[4], value);
  if (!WriteBytes(bytes)) return false;
  ++listHeader_.fieldCount;
  return true;
}

bool ReplyWriter::WriteTaggedSystemTime(DWORD field, const SYSTEMTIME& time) {
  std::array<BYTE, sizeof(DWORD) + kSystemTimeSize> bytes{};
  storeDword(bytes.data(), field);
  storeSystemTime(&bytes[4], time);
  if (!WriteBytes(bytes)) return false;
  ++listHeader_.fieldCount;
  return true;
}

bool ReplyWriter::WriteTaggedBlock98(DWORD field, std::span<const BYTE, kRecurrenceBlockSize> block) {
  if (!fitsBuffer(sizeof(DWORD) + kRecurrenceBlockSize)) return false;
  WriteDword(field);
  WriteBytes(block);
  ++listHeader_.fieldCount;
  return true;
}

void ReplyWriter::writeStatus(BYTE result, BYTE status) {
  WriteByte(result);
  WriteByte(status);
}

void ReplyWriter::writeListHeader() {
  WriteBytes(listHeader_.bytes());
}

void ReplyWriter::copyListHeader(DWORD at) {
  if (at + ListReplyHeader::kSize <= responseLength_) buffer_->write(at, listHeader_.bytes());
}

DWORD ReplyWriter::beginRecord() {
  const DWORD start = responseLength_;
  listHeader_.fieldCount = 0;
  writeListHeader();
  return start;
}

void ReplyWriter::endRecord(DWORD start, DWORD oid) {
  listHeader_.result = bufferFull_ ? 0 : 1;
  listHeader_.status = kStatusNone;
  listHeader_.count = oid;
  copyListHeader(start);
}

}  // namespace qorv
