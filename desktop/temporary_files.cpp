#include "desktop/temporary_files.h"

#include <algorithm>
#include <array>
#include <exception>

#include "desktop/device_error.h"
#include "desktop/file_commands.h"
#include "desktop/file_transfer.h"
#include "desktop/item_reader.h"
#include "desktop/item_writer.h"
#include "desktop/message_record.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// The device's usual temporary folder, and the one folder that is always there.
constexpr std::array<std::u16string_view, 2> kFolders{u"\\Temp\\", u"\\"};
/// Far more than interrupted sessions leave behind.
constexpr unsigned kMostNumbers = 10'000;

std::u16string fileName(unsigned number) {
  return toUtf16("qorv" + std::to_string(number) + ".tmp");
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
  constexpr int kTries = 3;
  dropGone();
  for (int tries = 0; tries < kTries && !isDone(); ++tries) {
    removeOnce();
    dropGone();
  }
  last_ = 0;
  if (isDone()) return;
  const std::string rest = spellRest();
  paths_.clear();
  carriers_.clear();
  throw DeviceRefusal("the device keeps " + rest);
}

void TemporaryFiles::removeOnce() {
  if (!paths_.empty()) {
    const ItemWrite carrier{0, carrierRecord(paths_)};
    const WriteAnswer answer = writeItems(session_, ItemType::Mail, std::span(&carrier, 1)).front();
    if (answer.accepted && answer.oid != 0) carriers_.push_back(answer.oid);
  }
  deleteItems(session_, ItemType::Mail, carriers_);
}

/// The device says that it deleted and consumed whatever happened, so that only looking tells.
void TemporaryFiles::dropGone() {
  std::erase_if(paths_, [&](const std::u16string& path) { return probe(session_, path) == kFileNotFound; });
  if (carriers_.empty()) return;
  const std::vector<std::uint32_t> there = listItems(session_, ItemType::Mail);
  std::erase_if(carriers_, [&](std::uint32_t oid) { return std::ranges::find(there, oid) == there.end(); });
}

std::string TemporaryFiles::spellRest() const {
  std::string rest;
  const auto add = [&](const std::string& what) { rest += (rest.empty() ? "" : ", ") + what; };
  for (const std::u16string& path : paths_) add("its temporary file " + desktop::quoted(path));
  for (const std::uint32_t oid : carriers_)
    add("the message " + std::to_string(oid) + " that removed its files");
  return rest;
}

}  // namespace desktop
