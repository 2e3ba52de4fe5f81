// The two file commands: append to a device's file, read a piece of one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "desktop/session.h"

namespace desktop {

/// The most bytes that one reply can bring: its buffer less the ten bytes in front of them.
constexpr std::uint32_t kMaxFileChunk = static_cast<std::uint32_t>(kReplyBufferSize) - 10;

/// The device's error numbers that the desktop acts on.
constexpr std::uint32_t kNoError = 0;
constexpr std::uint32_t kFileNotFound = 2;
constexpr std::uint32_t kFolderNotFound = 3;

struct AppendAnswer {
  bool done = false;
  std::uint32_t error = 0;  ///< the device's last error; only of interest when it wasn't done
};

/// Appends at the file's end, making the file when there is none. Nothing on the device ever shortens a file.
AppendAnswer appendFile(Session& session, std::u16string_view path, BytesView bytes);

struct FileChunk {
  bool opened = false;
  std::uint32_t error = 0;
  Bytes bytes;  ///< fewer than asked for at the file's end, or when reading failed: the device doesn't say
                ///< which
};

/// `count` is at most kMaxFileChunk.
FileChunk readFileChunk(Session& session, std::u16string_view path, std::uint32_t offset,
                        std::uint32_t count);

/// `error 2, no such file`
std::string spellDeviceError(std::uint32_t error);

}  // namespace desktop
