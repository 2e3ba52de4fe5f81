#include "emulator/messaging/mail_buffers.h"

#include <cstring>

namespace emulator {
namespace {

/// Told apart so that a buffer that is freed as the other kind shows.
const HANDLE kBufferHeap = reinterpret_cast<HANDLE>(std::uintptr_t{0x00050000});
const HANDLE kRowHeap = reinterpret_cast<HANDLE>(std::uintptr_t{0x00060000});

/// What a value points to begins at a multiple of this.
constexpr std::size_t kAlignment = alignof(void*);

constexpr std::size_t aligned(std::size_t size) {
  return (size + kAlignment - 1) / kAlignment * kAlignment;
}

/// Structures whose last member is the first of an array.
std::size_t sizeOfTagArray(std::size_t count) {
  return aligned(offsetof(SPropTagArray, aulPropTag) + count * sizeof(PropertyTag));
}
std::size_t sizeOfRowSet(std::size_t count) {
  return aligned(offsetof(SRowSet, aRow) + count * sizeof(SRow));
}

std::size_t payloadOf(const MailValue& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) {
    return aligned((text->size() + 1) * sizeof(char16_t));
  }
  const auto* bytes = std::get_if<Bytes>(&value);
  return bytes == nullptr ? 0 : aligned(bytes->size());
}

std::size_t sizeOfRow(const AnsweredRow& row) {
  std::size_t size = row.size() * sizeof(SPropValue);
  for (const AnsweredValue& answered : row) size += payloadOf(answered.value);
  return size;
}

/// Writes a value; what it points to goes to the payload.
class ValueWriter {
 public:
  ValueWriter(SPropValueUnion& target, BYTE* payload) : target_(target), payload_(payload) {}

  void operator()(const MissingValue& missing) const { target_.err = missing.reason; }
  void operator()(LONG number) const { target_.l = number; }
  void operator()(const std::u16string& text) const {
    std::memcpy(payload_, text.c_str(), (text.size() + 1) * sizeof(char16_t));
    target_.lpszW = reinterpret_cast<LPWSTR>(payload_);
  }
  void operator()(Ticks time) const { target_.ft = fileTimeOf(time); }
  void operator()(const Bytes& bytes) const {
    if (!bytes.empty()) std::memcpy(payload_, bytes.data(), bytes.size());
    target_.bin = {static_cast<ULONG>(bytes.size()), payload_};
  }

 private:
  SPropValueUnion& target_;
  BYTE* payload_;
};

/// The values of a row at `block`, with their payloads behind them.
SPropValue* writeRow(const AnsweredRow& row, BYTE* block) {
  auto* const values = reinterpret_cast<SPropValue*>(block);
  BYTE* payload = block + row.size() * sizeof(SPropValue);
  for (std::size_t i = 0; i < row.size(); ++i) {
    values[i] = {answeredTag(row[i].asked, row[i].value), 0, {}};
    std::visit(ValueWriter(values[i].Value, payload), row[i].value);
    payload += payloadOf(row[i].value);
  }
  return values;
}

}  // namespace

SPropValue* MailBuffers::values(const AnsweredRow& row) {
  auto* const block = static_cast<BYTE*>(memory_.allocateBlock(kBufferHeap, sizeOfRow(row)));
  return block == nullptr ? nullptr : writeRow(row, block);
}

SPropTagArray* MailBuffers::tags(const std::vector<PropertyTag>& tags) {
  auto* const block = static_cast<BYTE*>(memory_.allocateBlock(kBufferHeap, sizeOfTagArray(tags.size())));
  if (block == nullptr) return nullptr;
  auto* const array = reinterpret_cast<SPropTagArray*>(block);
  array->cValues = static_cast<ULONG>(tags.size());
  std::memcpy(block + offsetof(SPropTagArray, aulPropTag), tags.data(), tags.size() * sizeof(PropertyTag));
  return array;
}

SRowSet* MailBuffers::rows(const std::vector<AnsweredRow>& rows) {
  std::size_t size = sizeOfRowSet(rows.size());
  for (const AnsweredRow& row : rows) size += sizeOfRow(row);
  auto* const block = static_cast<BYTE*>(memory_.allocateBlock(kRowHeap, size));
  if (block == nullptr) return nullptr;
  auto* const set = reinterpret_cast<SRowSet*>(block);
  set->cRows = static_cast<ULONG>(rows.size());
  auto* next = reinterpret_cast<SRow*>(block + offsetof(SRowSet, aRow));
  BYTE* values = block + sizeOfRowSet(rows.size());
  for (const AnsweredRow& row : rows) {
    *next++ = {0, static_cast<ULONG>(row.size()), writeRow(row, values)};
    values += sizeOfRow(row);
  }
  return set;
}

bool MailBuffers::freeBuffer(void* buffer) {
  return buffer == nullptr || memory_.freeBlock(kBufferHeap, buffer);
}

bool MailBuffers::freeRows(SRowSet* rows) {
  return rows == nullptr || memory_.freeBlock(kRowHeap, rows);
}

}  // namespace emulator
