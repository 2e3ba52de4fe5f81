#include "pim/exception_record.h"

namespace qorv {

namespace {

template <typename Member>
struct Place {
  std::size_t offset;
  Member ExceptionRecord::*member;
};

constexpr Place<SYSTEMTIME> kTimes[] = {
    {0, &ExceptionRecord::originalDate}, {16, &ExceptionRecord::start}, {32, &ExceptionRecord::end}};

constexpr Place<DWORD> kWords[] = {{48, &ExceptionRecord::deleted},
                                   {52, &ExceptionRecord::reserved},
                                   {56, &ExceptionRecord::reminderSet},
                                   {60, &ExceptionRecord::reminderMinutes},
                                   {64, &ExceptionRecord::busyStatus}};

// Presence words; the texts follow the record in this order.
constexpr Place<ExceptionText> kTexts[] = {
    {68, &ExceptionRecord::subject}, {72, &ExceptionRecord::location}, {76, &ExceptionRecord::body}};

}  // namespace

std::array<BYTE, kExceptionRecordSize> ExceptionRecord::bytes() const {
  std::array<BYTE, kExceptionRecordSize> bytes{};
  for (const auto& place : kTimes) storeSystemTime(&bytes[place.offset], this->*place.member);
  for (const auto& place : kWords) storeDword(&bytes[place.offset], this->*place.member);
  for (const auto& place : kTexts) storeDword(&bytes[place.offset], (this->*place.member).present ? 1 : 0);
  return bytes;
}

ExceptionRecord readExceptionRecord(FieldReader& fields) {
  ExceptionRecord record;
  const BYTE* bytes = fields.bytes(kExceptionRecordSize);
  if (!bytes) return record;
  for (const auto& place : kTimes) record.*place.member = loadSystemTime(bytes + place.offset);
  for (const auto& place : kWords) record.*place.member = loadDword(bytes + place.offset);
  for (const auto& place : kTexts) {
    if (loadDword(bytes + place.offset) == 0) continue;
    record.*place.member = {true, fields.text().get()};
  }
  return record;
}

void writeExceptionRecord(ReplyWriter& writer, const ExceptionRecord& record) {
  writer.WriteBytes(record.bytes());
  for (const auto& place : kTexts) {
    const ExceptionText& text = record.*place.member;
    if (text.present) writer.WriteString(text.text.c_str());
  }
}

}  // namespace qorv
