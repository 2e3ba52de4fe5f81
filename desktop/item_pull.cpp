#include "desktop/item_pull.h"

#include "desktop/device_error.h"
#include "desktop/input_error.h"
#include "desktop/item_files.h"
#include "desktop/item_reader.h"
#include "desktop/item_uid.h"
#include "desktop/local_file.h"

namespace desktop {

namespace {

class Puller {
 public:
  Puller(const ItemKind& kind, const std::u16string& identity, const PullTarget& target)
      : kind_(kind), identity_(identity), target_(target) {}

  PullOutcome write(const Item& item, std::uint32_t oid) const {
    PullOutcome outcome = outcomeOf(oid);
    const std::string uid = itemUid(kind_, identity_, oid);
    try {
      const std::string text = kind_.fileText(item, uid, target_.style);
      outcome.failure = whyKept(outcome.file, uid);
      if (outcome.failure.empty()) outcome.written = writeTextFile(outcome.file, text);
    } catch (const DeviceRefusal& refusal) {
      outcome.failure = refusal.what();
    }
    return outcome;
  }

  PullOutcome fail(std::uint32_t oid, ReadFailure why) const {
    PullOutcome outcome = outcomeOf(oid);
    outcome.failure = spell(why);
    return outcome;
  }

 private:
  PullOutcome outcomeOf(std::uint32_t oid) const {
    PullOutcome outcome;
    outcome.oid = oid;
    outcome.file = target_.folder / (std::to_string(oid) + kind_.format.extension);
    return outcome;
  }

  /// Why the file must stay as it is: a person may keep something else under the item's name. Empty when it
  /// is the item's own, or isn't there.
  std::string whyKept(const std::filesystem::path& file, const std::string& uid) const {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) return {};
    try {
      if (namesOnly(readTextFile(file), uid)) return {};
    } catch (const InputError& unreadable) {
      return unreadable.what();
    }
    return file.string() + ": not this " + kind_.singular + "'s file, left as it is";
  }

  const ItemKind& kind_;
  const std::u16string& identity_;
  const PullTarget& target_;
};

}  // namespace

void pullItems(Session& session, const ItemKind& kind, const std::u16string& deviceIdentity,
               const PullTarget& target, const PullReport& report) {
  const Puller puller(kind, deviceIdentity, target);
  const std::vector<std::uint32_t> oids = listItems(session, kind.type);
  const ItemSink sink{
      [&](WireReader& record, std::uint32_t oid) {
        report(puller.write(kind.read(record, oid), oid), oids.size());
      },
      [&](std::uint32_t oid, ReadFailure why) { report(puller.fail(oid, why), oids.size()); },
  };
  readItems(session, kind.type, oids, sink);
}

}  // namespace desktop
