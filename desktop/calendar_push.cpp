#include "desktop/calendar_push.h"

#include <algorithm>
#include <map>
#include <unordered_set>

#include "desktop/all_day_end.h"
#include "desktop/appointment_record.h"
#include "desktop/calendar_uid.h"
#include "desktop/device_info.h"
#include "desktop/item_reader.h"
#include "desktop/item_writer.h"

namespace desktop {

namespace {

/// Sent and read back together, so that a report follows soon and little is held at a time.
constexpr std::size_t kPushBatch = 64;

struct Pending {
  const CalendarItem* item;
  Appointment sent;  ///< the entry as the device is to hold it
  PushOutcome outcome;
};

using PendingBatch = std::vector<Pending>;

/// The device's items that UIDs can name.
class KnownItems {
 public:
  explicit KnownItems(Session& session) : identity_(readIdentity(session)) {
    const auto oids = listItems(session, ItemType::Appointment);
    oids_.insert(oids.begin(), oids.end());
  }

  /// 0 when the UID names none of them.
  std::uint32_t find(std::string_view uid) const {
    const std::optional<std::uint32_t> oid = oidOfUid(identity_, uid);
    return oid && oids_.contains(*oid) ? *oid : 0;
  }

 private:
  std::u16string identity_;
  std::unordered_set<std::uint32_t> oids_;
};

Pending prepare(const CalendarItem& item, const KnownItems& known) {
  Pending pending{&item, item.entry.appointment, {}};
  pending.outcome.notes = item.entry.notes;
  pending.outcome.oid = known.find(item.entry.uid);
  pending.outcome.changed = pending.outcome.oid != 0;
  if (pending.sent.allDay && !canStayAllDay(pending.sent)) {
    pending.sent = fromMidnightToMidnight(pending.sent);
    pending.outcome.notes.push_back(
        "the device can't hold two whole days; it gets them as from midnight to midnight");
  }
  return pending;
}

void takeAnswer(PushOutcome& outcome, const WriteAnswer& answer) {
  outcome.oid = answer.accepted ? answer.oid : 0;
  if (!answer.accepted) {
    outcome.failure = "the device refused it";
  } else if (answer.oid == 0) {
    outcome.failure = "the device could not save it";
  }
}

void send(Session& session, PendingBatch& batch) {
  std::vector<ItemWrite> writes;
  std::vector<std::size_t> lastWrite;  // of each pending entry
  for (const Pending& pending : batch) {
    // A series is made anew: of one whose rule stays the same, the device would keep exceptions that are no
    // more.
    if (pending.outcome.changed && pending.sent.recurrence) {
      writes.push_back({pending.outcome.oid, clearingRecord()});
    }
    writes.push_back({pending.outcome.oid, writeAppointment(pending.sent)});
    lastWrite.push_back(writes.size() - 1);
  }
  const std::vector<WriteAnswer> answers = writeItems(session, ItemType::Appointment, writes);
  for (std::size_t i = 0; i < batch.size(); ++i) takeAnswer(batch[i].outcome, answers[lastWrite[i]]);
}

void readBack(Session& session, PendingBatch& batch) {
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
  const ItemSink sink{
      [&](WireReader& record, std::uint32_t oid) {
        const Appointment held = readAppointment(record, oid);
        forEach(oid, [&](Pending& pending) {
          pending.outcome.differences = compareAppointments(pending.sent, held);
        });
      },
      [&](std::uint32_t oid, ReadFailure why) {
        forEach(oid,
                [&](Pending& pending) { pending.outcome.failure = "can't be read back: " + spell(why); });
      },
  };
  readItems(session, ItemType::Appointment, oids, sink);
}

}  // namespace

void pushCalendar(Session& session, std::span<const CalendarItem> items, const PushReport& report) {
  const KnownItems known(session);
  while (!items.empty()) {
    const auto next = items.first(std::min(kPushBatch, items.size()));
    PendingBatch batch;
    for (const CalendarItem& item : next) batch.push_back(prepare(item, known));
    send(session, batch);
    readBack(session, batch);
    for (const Pending& pending : batch) report(*pending.item, pending.outcome);
    items = items.subspan(next.size());
  }
}

}  // namespace desktop
