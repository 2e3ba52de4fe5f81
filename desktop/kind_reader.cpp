#include "desktop/kind_reader.h"

#include <algorithm>
#include <optional>

#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/file_transfer.h"
#include "desktop/item_reader.h"
#include "desktop/record_field.h"
#include "desktop/temporary_files.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// What came of one item's request.
struct Read {
  std::uint32_t oid;
  std::optional<Item> item;
  std::string failure;  ///< when there is no item
};

/// In place of an item of a type that the device doesn't look up first, when it isn't there, the device sends a
/// header without fields.
bool takePlaceholder(WireReader& record) {
  WireReader ahead = record;
  ahead.raw(kRecordHeaderSize - 1);
  if (ahead.byte() != 0) return false;
  record = ahead;
  return true;
}

Read takeRecord(const ItemKind& kind, WireReader& record, std::uint32_t oid) {
  if (takePlaceholder(record)) return {oid, {}, spell(ReadFailure::NotFound)};
  Item item = kind.read(record, oid);
  if (kind.isMissing != nullptr && kind.isMissing(item)) return {oid, {}, spell(ReadFailure::NotFound)};
  return {oid, std::move(item), {}};
}

void handOver(Read read, const std::vector<std::string>& notes, const KindSink& sink) {
  if (read.item && read.failure.empty()) {
    sink.item(std::move(*read.item), read.oid, notes);
  } else {
    sink.failure(read.oid, read.failure);
  }
}

void readAlone(Session& session, const ItemKind& kind, std::span<const std::uint32_t> oids,
               const KindSink& sink) {
  const ItemSink records{
      [&](WireReader& record, std::uint32_t oid) { handOver(takeRecord(kind, record, oid), {}, sink); },
      [&](std::uint32_t oid, ReadFailure why) { sink.failure(oid, spell(why)); },
      sink.part,
  };
  readItems(session, kind.type, oids, records);
}

/// Reads the items of a kind that has accompanying files.
class FileReader {
 public:
  FileReader(Session& session, const ItemKind& kind, FilesWanted files, const KindSink& sink)
      : session_(session), kind_(kind), files_(files), sink_(sink) {}

  /// All records are known before anything is done with one, so that no way out leaves files on the device.
  void read(std::span<const std::uint32_t> oids) {
    TemporaryFiles left(session_);
    std::vector<Read> reads;
    const ItemSink records{
        [&](WireReader& record, std::uint32_t oid) {
          reads.push_back(takeRecord(kind_, record, oid));
          if (reads.back().item) left.own(kind_.files->of(*reads.back().item));
        },
        [&](std::uint32_t oid, ReadFailure why) {
          reads.push_back({oid, {}, spell(why)});
        },
        [&](WireReader record) { left.own(kind_.files->inPart(record)); },
    };
    readItems(session_, kind_.type, oids, records);
    for (Read& read : reads) {
      const std::vector<std::string> notes = fetchFiles(read);
      handOver(std::move(read), notes, sink_);
    }
    removeFiles(left);
  }

 private:
  /// Gives what is missing; a wanted file that can't be had makes the item fail.
  std::vector<std::string> fetchFiles(Read& read) {
    if (!read.item) return {};
    std::vector<AttachedFile>& files = kind_.files->of(*read.item);
    const auto lost = std::erase_if(files, [](const AttachedFile& file) { return file.path.empty(); });
    std::vector<std::string> notes;
    if (lost > 0) notes.emplace_back("the device doesn't give its attachments");
    if (files_ == FilesWanted::No) return notes;
    for (AttachedFile& file : files) {
      try {
        fetch(file);
      } catch (const DeviceRefusal& refusal) {
        read.failure = "attachment " + desktop::quoted(file.name) + ": " + refusal.what();
        break;
      }
    }
    return notes;
  }

  void fetch(AttachedFile& file) {
    readDeviceFile(session_, file.path,
                   [&](BytesView piece) { file.data.insert(file.data.end(), piece.begin(), piece.end()); });
  }

  void removeFiles(TemporaryFiles& left) {
    try {
      left.remove();
    } catch (const DeviceRefusal& refusal) {
      sink_.leftover(refusal.what());
    }
  }

  Session& session_;
  const ItemKind& kind_;
  FilesWanted files_;
  const KindSink& sink_;
};

}  // namespace

void readItems(Session& session, const ItemKind& kind, std::span<const std::uint32_t> oids, FilesWanted files,
               const KindSink& sink) {
  if (kind.type == ItemType::Note && !oids.empty() && !supportsNotes(session)) {
    // Such a device lists its notes but sends no records of them.
    for (const std::uint32_t oid : oids) sink.failure(oid, spell(ReadFailure::NotSupported));
    return;
  }
  if (kind.files == nullptr) return readAlone(session, kind, oids, sink);
  while (!oids.empty()) {
    const auto batch = oids.first(std::min(kBatchWithFiles, oids.size()));
    FileReader(session, kind, files, sink).read(batch);
    oids = oids.subspan(batch.size());
  }
}

}  // namespace desktop
