#include "desktop/item_pull.h"

#include "desktop/device_error.h"
#include "desktop/input_error.h"
#include "desktop/item_uid.h"
#include "desktop/kind_reader.h"
#include "desktop/local_file.h"
#include "desktop/pulled_files.h"

namespace desktop {

namespace {

class Puller {
 public:
  Puller(const ItemKind& kind, const std::u16string& identity, const PullTarget& target)
      : kind_(kind),
        identity_(identity),
        style_(target.style),
        files_(makePulledFiles(kind, identity, target.folder)) {}

  PullOutcome write(const Item& item, std::uint32_t oid) {
    PullOutcome outcome;
    outcome.oid = oid;
    outcome.file = files_->fileOf(item, oid);
    const std::string uid = itemUid(kind_, identity_, oid);
    try {
      const std::string text = kind_.fileText(item, uid, style_);
      outcome.failure = whyKept(outcome.file, text, uid);
      if (!outcome.failure.empty()) return outcome;
      outcome.written = writeTextFile(outcome.file, text);
      files_->keep(outcome.file);
    } catch (const DeviceRefusal& refusal) {
      outcome.failure = refusal.what();
    }
    return outcome;
  }

  void finish() { files_->finish(); }

 private:
  /// Why the file must stay as it is: a person may keep something else under the item's name. Empty when it
  /// is the item's own, holds the same, or isn't there.
  std::string whyKept(const std::filesystem::path& file, const std::string& text,
                      const std::string& uid) const {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) return {};
    try {
      const std::string there = readTextFile(file);
      if (there == text || files_->isOwn(file, there, uid)) return {};
    } catch (const InputError& unreadable) {
      return unreadable.what();
    }
    return file.string() + ": not this " + kind_.singular + "'s file, left as it is";
  }

  const ItemKind& kind_;
  const std::u16string& identity_;
  const FileStyle& style_;
  std::unique_ptr<PulledFiles> files_;
};

PullOutcome failed(std::uint32_t oid, ReadFailure why) {
  PullOutcome outcome;
  outcome.oid = oid;
  outcome.failure = spell(why);
  return outcome;
}

}  // namespace

void pullItems(Session& session, const ItemKind& kind, const std::u16string& deviceIdentity,
               const PullTarget& target, const PullReport& report) {
  Puller puller(kind, deviceIdentity, target);
  const std::vector<std::uint32_t> oids = listItems(session, kind.type);
  const KindSink sink{
      [&](const Item& item, std::uint32_t oid) { report(puller.write(item, oid), oids.size()); },
      [&](std::uint32_t oid, ReadFailure why) { report(failed(oid, why), oids.size()); },
  };
  readItems(session, kind, oids, sink);
  puller.finish();
}

}  // namespace desktop
