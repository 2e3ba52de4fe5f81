#include "desktop/item_push.h"

#include <algorithm>
#include <map>
#include <unordered_set>

#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/item_uid.h"
#include "desktop/item_writer.h"
#include "desktop/kind_reader.h"

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

/// The device's items of one kind, as the items of files are known to be theirs.
class KnownItems {
 public:
  KnownItems(Session& session, const ItemKind& kind, const std::u16string& identity)
      : kind_(kind), identity_(identity) {
    const auto oids = listItems(session, kind.type);
    oids_.insert(oids.begin(), oids.end());
    if (kind.identity == ItemIdentity::ByTitle) readTitles(session, oids);
  }

  /// 0 when it is none of them.
  std::uint32_t find(std::string_view uid, const Item& item) const {
    if (kind_.identity == ItemIdentity::ByUid) return findUid(uid);
    const auto titled = titles_.find(kind_.title(item));
    return titled == titles_.end() ? 0 : titled->second;
  }

 private:
  void readTitles(Session& session, std::span<const std::uint32_t> oids) {
    const KindSink sink{
        [this](const Item& item, std::uint32_t oid) { titles_.emplace(kind_.title(item), oid); },
        [](std::uint32_t, ReadFailure) {},
    };
    readItems(session, kind_, oids, sink);
  }

  std::uint32_t findUid(std::string_view uid) const {
    const std::optional<std::uint32_t> oid = oidOfUid(kind_, identity_, uid);
    return oid && oids_.contains(*oid) ? *oid : 0;
  }

  const ItemKind& kind_;
  const std::u16string& identity_;
  std::unordered_set<std::uint32_t> oids_;
  std::map<std::u16string, std::uint32_t> titles_;  ///< empty for kinds that are known by UIDs
};

/// Carries the items of one kind.
class Pusher {
 public:
  Pusher(Session& session, const ItemKind& kind, const std::u16string& identity)
      : session_(session), kind_(kind), known_(session, kind, identity) {}

  void push(std::span<const FileItem* const> items, const PushReport& report) {
    while (!items.empty()) {
      const auto next = items.first(std::min(kPushBatch, items.size()));
      PendingBatch batch;
      for (const FileItem* item : next) batch.push_back(prepare(*item));
      send(batch);
      readBack(batch);
      for (const Pending& pending : batch) report(*pending.item, pending.outcome);
      items = items.subspan(next.size());
    }
  }

 private:
  Pending prepare(const FileItem& item) const {
    Pending pending{&item, item.item, {}};
    pending.outcome.notes = item.notes;
    kind_.adapt(pending.sent, pending.outcome.notes);
    pending.outcome.oid = known_.find(item.uid, pending.sent);
    pending.outcome.changed = pending.outcome.oid != 0;
    return pending;
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
      if (round >= records[i].size() || !outcome.failure.empty()) continue;
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
    std::vector<std::uint32_t> oids;
    std::multimap<std::uint32_t, Pending*> written;
    for (Pending& pending : batch) {
      if (pending.outcome.oid == 0) continue;
      if (!written.contains(pending.outcome.oid)) oids.push_back(pending.outcome.oid);
      written.emplace(pending.outcome.oid, &pending);
    }
    const auto forEach = [&](std::uint32_t oid, const auto& act) {
      const auto [first, last] = written.equal_range(oid);
      for (auto entry = first; entry != last; ++entry) act(*entry->second);
    };
    const KindSink sink{
        [&](const Item& held, std::uint32_t oid) {
          forEach(oid,
                  [&](Pending& pending) { pending.outcome.differences = kind_.compare(pending.sent, held); });
        },
        [&](std::uint32_t oid, ReadFailure why) {
          forEach(oid,
                  [&](Pending& pending) { pending.outcome.failure = "can't be read back: " + spell(why); });
        },
    };
    readItems(session_, kind_, oids, sink);
  }

  Session& session_;
  const ItemKind& kind_;
  KnownItems known_;
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
