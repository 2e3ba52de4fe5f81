#include "emulator/ink/rich_ink.h"

#include <optional>
#include <utility>

#include "emulator/ink/note_file.h"
#include "platform/errors.h"
#include "platform/rich_ink.h"

namespace emulator {
namespace {

constexpr std::u16string_view kClassName = u"RichInk";

std::u16string decodeText(ByteView bytes) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto character = static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    if (character == u'\0') break;
    text += character;
  }
  return text;
}

Bytes encodeText(std::u16string_view text) {
  Bytes bytes;
  bytes.reserve(text.size() * 2);
  for (const char16_t character : text) {
    bytes.push_back(static_cast<std::uint8_t>(character));
    bytes.push_back(static_cast<std::uint8_t>(character >> 8));
  }
  return bytes;
}

bool isKnownFormat(UINT format) {
  return format == SF_UTEXT || format == SF_PWI;
}

}  // namespace

void RichInk::registerClass() {
  if (windows_.hasClass(kClassName)) return;
  windows_.registerClass(kClassName, [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return receive(window, message, wParam, lParam);
  });
}

void RichInk::unregisterClass() {
  windows_.unregisterClass(kClassName);
}

LRESULT RichInk::receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) texts_.erase(window);
  if (message != EM_STREAMIN && message != EM_STREAMOUT) return 0;
  auto& stream = *reinterpret_cast<EDITSTREAM*>(lParam);
  const auto format = static_cast<UINT>(wParam);
  if (!isKnownFormat(format)) {
    stream.dwError = ERROR_INVALID_PARAMETER;
    return 0;
  }
  return message == EM_STREAMIN ? streamIn(window, format, stream) : streamOut(window, format, stream);
}

LRESULT RichInk::streamIn(HWND window, UINT format, EDITSTREAM& stream) {
  Bytes bytes;
  if (pullAll(stream, chunkSizes_, bytes) != ERROR_SUCCESS) return 0;
  auto read = format == SF_PWI ? decodeNoteFile(bytes) : decodeText(bytes);
  if (!read) {
    stream.dwError = ERROR_INVALID_DATA;
    return 0;
  }
  const auto characters = static_cast<LRESULT>(read->size());
  texts_[window] = std::move(*read);
  return characters;
}

LRESULT RichInk::streamOut(HWND window, UINT format, EDITSTREAM& stream) {
  const std::u16string text = texts_[window];
  Bytes bytes = format == SF_PWI ? encodeNoteFile(text) : encodeText(text);
  const bool isOut = pushAll(stream, chunkSizes_, std::move(bytes)) == ERROR_SUCCESS;
  return isOut ? static_cast<LRESULT>(text.size()) : 0;
}

}  // namespace emulator
