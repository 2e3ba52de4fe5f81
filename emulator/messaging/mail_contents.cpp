#include "emulator/messaging/mail_contents.h"

#include <algorithm>

namespace emulator {

ContentNumber MailContents::make() {
  Cursor row = connection_.query("INSERT INTO mail_content (size) VALUES (0) RETURNING number");
  row.next();
  return row.get<ContentNumber>(0);
}

std::optional<std::int64_t> MailContents::size(ContentNumber content) {
  Cursor row = connection_.query("SELECT size FROM mail_content WHERE number = ?", content);
  if (!row.next()) return std::nullopt;
  return row.get<std::int64_t>(0);
}

std::size_t MailContents::read(ContentNumber content, std::int64_t offset, std::span<std::uint8_t> buffer) {
  const std::int64_t left = std::max<std::int64_t>(size(content).value_or(0) - offset, 0);
  const auto length = static_cast<std::size_t>(std::min(left, static_cast<std::int64_t>(buffer.size())));
  if (length != 0) chunks_.read(content, offset, buffer.first(length));
  return length;
}

Bytes MailContents::readAll(ContentNumber content) {
  Bytes bytes(static_cast<std::size_t>(size(content).value_or(0)));
  chunks_.read(content, 0, bytes);
  return bytes;
}

void MailContents::write(ContentNumber content, std::int64_t offset, ByteView data) {
  chunks_.write(content, offset, data);
  setSize(content, std::max(size(content).value_or(0), offset + std::ssize(data)));
}

void MailContents::clear(ContentNumber content) {
  chunks_.clear(content);
  setSize(content, 0);
}

void MailContents::remove(ContentNumber content) {
  connection_.run("DELETE FROM mail_content WHERE number = ?", content);
}

void MailContents::setSize(ContentNumber content, std::int64_t size) {
  connection_.run("UPDATE mail_content SET size = ? WHERE number = ?", size, content);
}

}  // namespace emulator
