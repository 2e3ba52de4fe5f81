#include "desktop/file_commands.h"

#include <array>

#include "desktop/device_error.h"

namespace desktop {

namespace {

// The item type plays no part, but every request needs a valid one.
constexpr ItemType kAnyType = ItemType::Appointment;
constexpr std::uint32_t kUnused = 0;

struct ErrorName {
  std::uint32_t error;
  const char* name;
};

constexpr std::array kErrorNames{
    ErrorName{kFileNotFound, "no such file"},
    ErrorName{kFolderNotFound, "no such folder"},
    ErrorName{5, "access denied"},
    ErrorName{19, "write-protected"},
    ErrorName{32, "in use by another program"},
    ErrorName{112, "no room left"},
    ErrorName{123, "no valid file name"},
};

}  // namespace

AppendAnswer appendFile(Session& session, std::u16string_view path, BytesView bytes) {
  WireWriter arguments;
  arguments.text(path);
  arguments.number(kUnused);
  arguments.number(static_cast<std::uint32_t>(bytes.size()));
  arguments.raw(bytes);
  const Bytes reply = session.request(Command::AppendFile, kAnyType, arguments.take());
  WireReader reader(reply);
  AppendAnswer answer;
  answer.done = reader.byte() == 1;
  reader.byte();
  answer.error = reader.number();
  reader.expectEnd();
  return answer;
}

FileChunk readFileChunk(Session& session, std::u16string_view path, std::uint32_t offset,
                        std::uint32_t count) {
  WireWriter arguments;
  arguments.text(path);
  arguments.number(kUnused);
  arguments.number(offset);
  arguments.number(count);
  const Bytes reply = session.request(Command::ReadFileChunk, kAnyType, arguments.take());
  WireReader reader(reply);
  FileChunk chunk;
  chunk.opened = reader.byte() == 1;
  reader.byte();
  chunk.error = reader.number();
  const std::uint32_t got = reader.number();
  if (got > count) {
    throw ProtocolError("the device read " + std::to_string(got) + " bytes of a file where " +
                        std::to_string(count) + " were asked for");
  }
  const BytesView bytes = reader.raw(got);
  chunk.bytes.assign(bytes.begin(), bytes.end());
  reader.expectEnd();
  return chunk;
}

std::string spellDeviceError(std::uint32_t error) {
  std::string text = "error " + std::to_string(error);
  for (const ErrorName& entry : kErrorNames) {
    if (entry.error == error) text += std::string(", ") + entry.name;
  }
  return text;
}

}  // namespace desktop
