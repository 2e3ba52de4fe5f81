#include "desktop/item_pull.h"

#include "desktop/device_error.h"
#include "desktop/input_error.h"
#include "desktop/item_reader.h"
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
        files_(kind.openFiles(kind, identity, target.folder)) {}

  PullOutcome write(const Item& item, std::uint32_t oid, const std::vector<std::string>& notes) {
    PullOutcome outcome;
    outcome.oid = oid;
    outcome.notes = notes;
    outcome.file = files_->fileOf(item, oid);
    const std::string uid = itemUid(kind_, identity_, oid);
    try {
      const std::string text = kind_.fileText(item, uid, style_);
      outcome.failure = whyKept(outcome.file, text, uid);
      if (outcome.failure.empty()) outcome.failure = whyPoorer(files_->current(outcome.file), text, notes);
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

  /// Why the item's own file must stay: what the device gave lacks something that the file has.
  static std::string whyPoorer(const std::filesystem::path& file, const std::string& text,
                               const std::vector<std::string>& notes) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return {};
    const std::string there = readTextFile(file);
    const std::string stays = ": " + file.string() + " is left as it is";
    if (there == text) return {};
    if (!notes.empty()) return notes.front() + stays;
    // The device sends an empty text also when it can't read what it has.
    return text.empty() ? "the device has it empty, or can't read it" + stays : std::string();
  }

  const ItemKind& kind_;
  const std::u16string& identity_;
  const FileStyle& style_;
  std::unique_ptr<PulledFiles> files_;
};

PullOutcome failed(std::uint32_t oid, const std::string& why) {
  PullOutcome outcome;
  outcome.oid = oid;
  outcome.failure = why;
  return outcome;
}

}  // namespace

void pullItems(Session& session, const ItemKind& kind, const std::u16string& deviceIdentity,
               const PullTarget& target, const PullReport& report) {
  Puller puller(kind, deviceIdentity, target);
  const std::vector<std::uint32_t> oids = listItems(session, kind.type);
  std::string leftover;
  const KindSink sink{
      [&](const Item& item, std::uint32_t oid, const std::vector<std::string>& notes) {
        report(puller.write(item, oid, notes), oids.size());
      },
      [&](std::uint32_t oid, const std::string& why) { report(failed(oid, why), oids.size()); },
      [&](const std::string& what) { leftover = what; },
  };
  readItems(session, kind, oids, FilesWanted::Yes, sink);
  puller.finish();
  if (!leftover.empty()) throw DeviceRefusal(leftover);
}

}  // namespace desktop
