#include "tests/mail/mail_test.h"

#include <sstream>

#include "emulator/snapshot/snapshot.h"

namespace test {
namespace {

std::u16string textAt(const Bytes& value) {
  std::u16string text;
  for (std::size_t at = 4; at + 1 < value.size(); at += 2) {
    text += static_cast<char16_t>(value.vector()[at] | value.vector()[at + 1] << 8);
  }
  EXPECT_TRUE(!text.empty() && text.back() == u'\0') << "with its terminator";
  if (!text.empty()) text.pop_back();
  return text;
}

/// What a field's tag says about the length of its value.
std::size_t valueSize(unsigned tag, const Bytes& reply, std::size_t offset) {
  switch (tag) {
    case kFlags:
    case kHasPlace:
      return 4;
    case kDelivered:
    case kStart:
    case kEnd:
      return 16;
    default:
      return 4 + reply.dwordAt(offset);
  }
}

}  // namespace

std::vector<unsigned> MailRecord::tags() const {
  std::vector<unsigned> found;
  for (const auto& field : fields) found.push_back(field.first);
  return found;
}

const Bytes* MailRecord::find(unsigned tag) const {
  for (const auto& field : fields) {
    if (field.first == tag) return &field.second;
  }
  return nullptr;
}

std::u16string MailRecord::text(unsigned tag) const {
  const Bytes* value = find(tag);
  return value ? textAt(*value) : u"(none)";
}

DWORD MailRecord::number(unsigned tag) const {
  const Bytes* value = find(tag);
  return value ? value->dwordAt(0) : 0xBADBAD;
}

MailRecord parseMailRecord(const Bytes& reply, std::size_t& offset) {
  MailRecord record{reply.slice(offset, 7), {}};
  offset += 7;
  for (unsigned count = record.header.vector()[6]; count > 0; --count) {
    const unsigned tag = reply.dwordAt(offset);
    const std::size_t size = valueSize(tag, reply, offset + 4);
    record.fields.emplace_back(tag, reply.slice(offset + 4, size));
    offset += 4 + size;
  }
  return record;
}

void MailTest::load(const std::string& snapshot) {
  emulator::loadSnapshot(device(), snapshot);
}

nlohmann::json MailTest::folder(const std::string& name) {
  std::ostringstream out;
  emulator::dumpSnapshot(device(), out);
  return nlohmann::json::parse(out.str())["mail"][name];
}

std::optional<std::string> MailTest::file(const std::string& path) {
  const Bytes answer =
      reply(request(19, kMail).text(std::u16string(path.begin(), path.end())).u32(0).u32(0).u32(100000));
  if (answer.size() < 10 || answer.vector()[0] == 0) return std::nullopt;
  return std::string(answer.vector().begin() + 10, answer.vector().end());
}

MailRecord MailTest::read(DWORD id) {
  const Bytes answer = reply(request(7, kMail).u32(id));
  std::size_t offset = 0;
  MailRecord record = parseMailRecord(answer, offset);
  EXPECT_EQ(offset, answer.size());
  return record;
}

DWORD MailTest::add(const Bytes& record) {
  const Bytes answer = reply(request(2, kMail).u32(77).append(record));
  EXPECT_EQ(answer.size(), 20u);
  EXPECT_EQ(answer.slice(0, 2), hex("01 00"));
  EXPECT_EQ(answer.dwordAt(6), 77u);
  EXPECT_EQ(answer.slice(10, 10), Bytes().zeros(10));
  return answer.dwordAt(2);
}

}  // namespace test
