#include "emulator/system/file_contents.h"

#include <algorithm>

namespace emulator {

void FileContents::read(Oid file, std::int64_t offset, std::span<BYTE> buffer) {
  std::ranges::fill(buffer, BYTE{0});
  const std::int64_t end = offset + std::ssize(buffer);
  Cursor row =
      connection_.query("SELECT number, data FROM file_chunk WHERE file = ? AND number BETWEEN ? AND ?", file,
                        offset / kChunkBytes, end / kChunkBytes);
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

void FileContents::write(Oid file, std::int64_t offset, ByteView data) {
  while (!data.empty()) {
    const std::int64_t number = offset / kChunkBytes;
    const auto begin = static_cast<std::size_t>(offset % kChunkBytes);
    const auto length = std::min(data.size(), static_cast<std::size_t>(kChunkBytes) - begin);
    Bytes bytes = length == static_cast<std::size_t>(kChunkBytes) ? Bytes() : chunk(file, number);
    bytes.resize(std::max(bytes.size(), begin + length));
    std::ranges::copy(data.first(length), bytes.begin() + static_cast<std::ptrdiff_t>(begin));
    connection_.run(
        "INSERT INTO file_chunk (file, number, data) VALUES (?, ?, ?)"
        " ON CONFLICT (file, number) DO UPDATE SET data = excluded.data",
        file, number, bytes);
    data = data.subspan(length);
    offset += static_cast<std::int64_t>(length);
  }
}

void FileContents::clear(Oid file) {
  connection_.run("DELETE FROM file_chunk WHERE file = ?", file);
}

Bytes FileContents::chunk(Oid file, std::int64_t number) {
  Cursor row = connection_.query("SELECT data FROM file_chunk WHERE file = ? AND number = ?", file, number);
  return row.next() ? row.get<Bytes>(0) : Bytes();
}

}  // namespace emulator
