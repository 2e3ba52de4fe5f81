#include "emulator/store/chunked_bytes.h"

#include <algorithm>

namespace emulator {

ChunkedBytes::ChunkedBytes(Connection& connection, const std::string& table, const std::string& owner)
    : connection_(connection),
      readRange_("SELECT number, data FROM " + table + " WHERE " + owner + " = ? AND number BETWEEN ? AND ?"),
      readOne_("SELECT data FROM " + table + " WHERE " + owner + " = ? AND number = ?"),
      writeOne_("INSERT INTO " + table + " (" + owner +
                ", number, data) VALUES (?, ?, ?)"
                " ON CONFLICT (" +
                owner + ", number) DO UPDATE SET data = excluded.data"),
      clear_("DELETE FROM " + table + " WHERE " + owner + " = ?") {}

void ChunkedBytes::read(std::int64_t owner, std::int64_t offset, std::span<std::uint8_t> buffer) {
  std::ranges::fill(buffer, std::uint8_t{0});
  const std::int64_t end = offset + std::ssize(buffer);
  Cursor row = connection_.query(readRange_, owner, offset / kChunkBytes, end / kChunkBytes);
  while (row.next()) {
    const std::int64_t begin = row.get<std::int64_t>(0) * kChunkBytes;
    const ByteView data = row.get<ByteView>(1);
    const std::int64_t from = std::max(offset, begin);
    const std::int64_t to = std::min(end, begin + std::ssize(data));
    if (from >= to) continue;
    std::ranges::copy(
        data.subspan(static_cast<std::size_t>(from - begin), static_cast<std::size_t>(to - from)),
        buffer.begin() + (from - offset));
  }
}

void ChunkedBytes::write(std::int64_t owner, std::int64_t offset, ByteView data) {
  while (!data.empty()) {
    const std::int64_t number = offset / kChunkBytes;
    const auto begin = static_cast<std::size_t>(offset % kChunkBytes);
    const auto length = std::min(data.size(), static_cast<std::size_t>(kChunkBytes) - begin);
    Bytes bytes = length == static_cast<std::size_t>(kChunkBytes) ? Bytes() : chunk(owner, number);
    bytes.resize(std::max(bytes.size(), begin + length));
    std::ranges::copy(data.first(length), bytes.begin() + static_cast<std::ptrdiff_t>(begin));
    connection_.run(writeOne_, owner, number, bytes);
    data = data.subspan(length);
    offset += static_cast<std::int64_t>(length);
  }
}

void ChunkedBytes::clear(std::int64_t owner) {
  connection_.run(clear_, owner);
}

Bytes ChunkedBytes::chunk(std::int64_t owner, std::int64_t number) {
  Cursor row = connection_.query(readOne_, owner, number);
  return row.next() ? row.get<Bytes>(0) : Bytes();
}

}  // namespace emulator
