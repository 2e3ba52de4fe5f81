#include "desktop/temporary_files.h"

#include <array>
#include <exception>
#include <utility>

#include "desktop/device_error.h"
#include "desktop/file_commands.h"
#include "desktop/file_transfer.h"
#include "desktop/item_writer.h"
#include "desktop/message_record.h"

namespace desktop {

namespace {

/// The device's usual temporary folder, and the one folder that is always there.
constexpr std::array<std::u16string_view, 2> kFolders{u"\\Temp\\", u"\\"};
/// Far more than interrupted sessions leave behind.
constexpr unsigned kMostNumbers = 10'000;

std::u16string fileName(unsigned number) {
  const std::string digits = std::to_string(number);
  return u"qorv" + std::u16string(digits.begin(), digits.end()) + u".tmp";
}

/// The device's error: no error when there is such a file.
std::uint32_t probe(Session& session, const std::u16string& path) {
  const FileChunk chunk = readFileChunk(session, path, 0, 1);
  return chunk.opened ? kNoError : chunk.error;
}

}  // namespace

TemporaryFiles::~TemporaryFiles() {
  if (!session_.canAsk()) return;
  try {
    remove();
  } catch (const std::exception&) {
    // Whatever brought us here is what the user is told.
  }
}

void TemporaryFiles::own(std::span<const AttachedFile> files) {
  for (const AttachedFile& file : files) {
    if (!file.path.empty()) paths_.push_back(file.path);
  }
}

std::u16string TemporaryFiles::freePath() {
  for (const std::u16string_view folder : kFolders) {
    while (last_ < kMostNumbers) {
      const std::u16string path = std::u16string(folder) + fileName(last_ + 1);
      const std::uint32_t error = probe(session_, path);
      if (error == kFolderNotFound) break;
      ++last_;
      // Any other file of that name stays: an interrupted session's, or one that can't be opened.
      if (error == kFileNotFound) return path;
    }
  }
  throw DeviceRefusal("the device has no place for temporary files");
}

std::u16string TemporaryFiles::put(BytesView data) {
  const std::u16string path = freePath();
  paths_.push_back(path);
  appendToDeviceFile(session_, path, data);
  return path;
}

void TemporaryFiles::remove() {
  if (paths_.empty()) return;
  const std::vector<std::u16string> paths = std::exchange(paths_, {});
  const ItemWrite carrier{0, carrierRecord(paths)};
  const WriteAnswer answer = writeItems(session_, ItemType::Mail, std::span(&carrier, 1)).front();
  if (!answer.accepted || answer.oid == 0) throw DeviceRefusal("the device keeps its temporary files");
  deleteItems(session_, ItemType::Mail, std::span(&answer.oid, 1));
}

}  // namespace desktop
