#include "emulator/ink/note_file.h"

#include <algorithm>
#include <array>

namespace emulator {
namespace {

// Line ends and an end-of-text mark, so that a file that went through a text conversion is no note any more.
constexpr std::array<std::uint8_t, 8> kSignature{'Q', 'V', 'I', 'N', 'K', 0x0D, 0x0A, 0x1A};
constexpr std::uint64_t kVersion = 1;

constexpr std::size_t kVersionAt = kSignature.size();
constexpr std::size_t kLengthAt = kVersionAt + 2;
constexpr std::size_t kTextAt = kLengthAt + 4;

void append(Bytes& bytes, std::uint64_t value, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

std::uint64_t load(ByteView bytes, std::size_t at, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i-- > 0;) value = value << 8 | bytes[at + i];
  return value;
}

}  // namespace

Bytes encodeNoteFile(std::u16string_view text) {
  Bytes file(kSignature.begin(), kSignature.end());
  file.reserve(kTextAt + text.size() * 2);
  append(file, kVersion, 2);
  append(file, text.size(), 4);
  for (const char16_t character : text) append(file, character, 2);
  return file;
}

std::optional<std::u16string> decodeNoteFile(ByteView file) {
  if (file.size() < kTextAt || !std::ranges::equal(file.first(kSignature.size()), kSignature)) return {};
  if (load(file, kVersionAt, 2) != kVersion) return {};
  const std::uint64_t length = load(file, kLengthAt, 4);
  if (file.size() != kTextAt + length * 2) return {};
  std::u16string text(length, u'\0');
  for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<char16_t>(load(file, kTextAt + i * 2, 2));
  if (text.find(u'\0') != std::u16string::npos) return {};
  return text;
}

}  // namespace emulator
