#include "desktop/item_push.h"

#include <algorithm>
#include <map>
#include <set>

#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/item_reader.h"
#include "desktop/item_text.h"
#include "desktop/item_writer.h"
#include "desktop/kind_reader.h"
#include "desktop/known_items.h"
#include "desktop/temporary_files.h"

namespace desktop {

namespace {

/// Sent and read back together, so that a report follows soon and little is held at a time.
constexpr std::size_t kPushBatch = 64;

struct Pending {
  const FileItem* item;
  Item sent;  ///< as the device is to hold it
  PushOutcome outcome;
};

using PendingBatch = std::vector<Pending>;

/// Carries the items of one kind.
class Pusher {
 public:
  Pusher(Session& session, const ItemKind& kind, const std::u16string& identity)
      : session_(session), kind_(kind), known_(session, kind, identity), files_(session) {}

  void push(std::span<const FileItem* const> items, const PushReport& report) {
    const std::size_t most = kind_.files == nullptr ? kPushBatch : kBatchWithFiles;
    while (!items.empty()) {
      const auto next = items.first(std::min(most, items.size()));
      PendingBatch batch;
      for (const FileItem* item : next) batch.push_back(prepare(*item));
      spareEqual(batch);
      putFiles(batch);
      send(batch);
      readBack(batch);
      removeFiles(batch);
      for (const Pending& pending : batch) report(*pending.item, pending.outcome);
      items = items.subspan(next.size());
    }
  }

 private:
  Pending prepare(const FileItem& item) {
    Pending pending{&item, item.item, {}};
    PushOutcome& outcome = pending.outcome;
    outcome.notes = item.notes;
    const bool isByTitle = kind_.identity == ItemIdentity::ByTitle;
    // A title that the device has must stay as it is, also one that it wouldn't take of a new item.
    if (isByTitle) outcome.oid = known_.find(item.uid, pending.sent);
    if (outcome.oid == 0) {
      if (kind_.adapt != nullptr) kind_.adapt(pending.sent, outcome.notes);
      outcome.oid = known_.find(item.uid, pending.sent);
    }
    outcome.changed = outcome.oid != 0;
    if (isByTitle && !titles_.insert(foldCase(kind_.title(pending.sent))).second) {
      outcome.failure = "another file has the same name on the device";
      outcome.oid = 0;
    }
    return pending;
  }

  static bool isSent(const PushOutcome& outcome) { return outcome.failure.empty() && !outcome.unchanged; }

  /// Leaves alone what the device has already, of kinds that lose something when they are written.
  void spareEqual(PendingBatch& batch) {
    if (!kind_.sparesEqual) return;
    readHeld(
        batch,
        [&](Pending& pending, const Item& held) {
          pending.outcome.unchanged = kind_.compare(pending.sent, held).empty();
        },
        [](Pending&, const std::string&) {});
  }

  /// Only what is added takes files along.
  void putFiles(PendingBatch& batch) {
    if (kind_.files == nullptr) return;
    for (Pending& pending : batch) {
      if (pending.outcome.changed) continue;
      try {
        for (AttachedFile& file : kind_.files->of(pending.sent)) file.path = files_.put(file.data);
      } catch (const DeviceRefusal& refusal) {
        pending.outcome.failure = refusal.what();
      }
    }
  }

  /// The device has consumed the files of what it took; the others go now.
  void removeFiles(PendingBatch& batch) {
    try {
      files_.remove();
    } catch (const DeviceRefusal& refusal) {
      leftover_ = refusal.what();
    }
    PushOutcome& first = batch.front().outcome;
    if (first.failure.empty()) first.failure = leftover_;
    leftover_.clear();
  }

  /// Round by round, as an item that is added has its OID only after its first record.
  void send(PendingBatch& batch) {
    std::vector<std::vector<Bytes>> records;
    for (const Pending& pending : batch) {
      records.push_back(kind_.write(pending.sent, pending.outcome.changed));
    }
    for (std::size_t round = 0; sendRound(batch, records, round); ++round) {
    }
  }

  /// Sends each item's record of the round; false when there was none left.
  bool sendRound(PendingBatch& batch, std::vector<std::vector<Bytes>>& records, std::size_t round) {
    std::vector<ItemWrite> writes;
    std::vector<PushOutcome*> written;
    for (std::size_t i = 0; i < batch.size(); ++i) {
      PushOutcome& outcome = batch[i].outcome;
      if (round >= records[i].size() || !isSent(outcome)) continue;
      writes.push_back({outcome.oid, std::move(records[i][round])});
      written.push_back(&outcome);
    }
    const std::vector<WriteAnswer> answers = writeItems(session_, kind_.type, writes);
    for (std::size_t i = 0; i < answers.size(); ++i) takeAnswer(*written[i], answers[i]);
    return !writes.empty();
  }

  static void takeAnswer(PushOutcome& outcome, const WriteAnswer& answer) {
    outcome.oid = answer.accepted ? answer.oid : 0;
    if (!answer.accepted) {
      outcome.failure = "the device refused it";
    } else if (answer.oid == 0) {
      outcome.failure = "the device could not save it";
    }
  }

  void readBack(PendingBatch& batch) {
    readHeld(
        batch,
        [&](Pending& pending, const Item& held) {
          pending.outcome.differences = kind_.compare(pending.sent, held);
        },
        [](Pending& pending, const std::string& why) {
          pending.outcome.failure = "can't be read back: " + why;
        });
  }

  /// Reads those that are on the device and still to be looked at; each item once, whatever is known by it.
  template <typename Use, typename Fail>
  void readHeld(PendingBatch& batch, const Use& use, const Fail& fail) {
    std::vector<std::uint32_t> oids;
    std::multimap<std::uint32_t, Pending*> holders;
    for (Pending& pending : batch) {
      if (pending.outcome.oid == 0 || !isSent(pending.outcome)) continue;
      if (!holders.contains(pending.outcome.oid)) oids.push_back(pending.outcome.oid);
      holders.emplace(pending.outcome.oid, &pending);
    }
    const auto forEach = [&](std::uint32_t oid, const auto& act) {
      const auto [first, last] = holders.equal_range(oid);
      for (auto entry = first; entry != last; ++entry) act(*entry->second);
    };
    const KindSink sink{
        [&](const Item& held, std::uint32_t oid, const std::vector<std::string>&) {
          forEach(oid, [&](Pending& pending) { use(pending, held); });
        },
        [&](std::uint32_t oid, const std::string& why) {
          forEach(oid, [&](Pending& pending) { fail(pending, why); });
        },
        [&](const std::string& what) { leftover_ = what; },
    };
    readItems(session_, kind_, oids, FilesWanted::Yes, sink);
  }

  Session& session_;
  const ItemKind& kind_;
  KnownItems known_;
  TemporaryFiles files_;
  std::set<std::u16string> titles_;  ///< of what was prepared, for kinds that are known by them
  std::string leftover_;             ///< what the device keeps of the batch's files
};

std::vector<const FileItem*> ofKind(std::span<const FileItem> items, const ItemKind& kind) {
  std::vector<const FileItem*> chosen;
  for (const FileItem& item : items) {
    if (&kindOf(item.item) == &kind) chosen.push_back(&item);
  }
  return chosen;
}

void pushKind(Session& session, const ItemKind& kind, const std::u16string& identity,
              std::span<const FileItem* const> items, const PushReport& report) {
  try {
    Pusher(session, kind, identity).push(items, report);
  } catch (const DeviceRefusal& refusal) {
    // Only the list of what is there can be refused, before anything is sent.
    PushOutcome outcome;
    outcome.failure = refusal.what();
    for (const FileItem* item : items) report(*item, outcome);
  }
}

}  // namespace

void pushItems(Session& session, std::span<const FileItem> items, const PushReport& report) {
  const std::u16string identity = readIdentity(session);
  for (const ItemKind* kind : itemKinds()) {
    const std::vector<const FileItem*> chosen = ofKind(items, *kind);
    if (!chosen.empty()) pushKind(session, *kind, identity, chosen, report);
  }
}

}  // namespace desktop
