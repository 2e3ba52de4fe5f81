#include "emulator/database/record_walk.h"

namespace emulator {
namespace {

std::optional<RecordPlace> placeOf(Cursor row) {
  if (!row.next()) return std::nullopt;
  return RecordPlace{row.get<Bytes>(0), row.get<Oid>(1)};
}

}  // namespace

/// ?1 is the order or database, ?2 and ?3 a key and a record, or two keys, ?4 the steps.
struct RecordWalk::Statements {
  std::string_view fromBeginning;
  std::string_view fromEnd;
  std::string_view after;
  std::string_view before;
  std::string_view countBefore;
};

constexpr RecordWalk::Statements RecordWalk::kKeyed{
    .fromBeginning =
        "SELECT key, record FROM record_key WHERE sort_order = ?1"
        " ORDER BY key, record LIMIT 1 OFFSET ?2",
    .fromEnd =
        "SELECT key, record FROM record_key WHERE sort_order = ?1"
        " ORDER BY key DESC, record DESC LIMIT 1 OFFSET ?2",
    .after =
        "SELECT key, record FROM record_key WHERE sort_order = ?1 AND (key, record) > (?2, ?3)"
        " ORDER BY key, record LIMIT 1 OFFSET ?4",
    .before =
        "SELECT key, record FROM record_key WHERE sort_order = ?1 AND (key, record) < (?2, ?3)"
        " ORDER BY key DESC, record DESC LIMIT 1 OFFSET ?4",
    .countBefore = "SELECT COUNT(*) FROM record_key WHERE sort_order = ?1 AND (key, record) < (?2, ?3)",
};

constexpr RecordWalk::Statements RecordWalk::kPlain{
    .fromBeginning = "SELECT x'', oid FROM record WHERE parent = ?1 ORDER BY oid LIMIT 1 OFFSET ?2",
    .fromEnd = "SELECT x'', oid FROM record WHERE parent = ?1 ORDER BY oid DESC LIMIT 1 OFFSET ?2",
    .after = "SELECT x'', oid FROM record WHERE parent = ?1 AND oid > ?3 ORDER BY oid LIMIT 1 OFFSET ?4",
    .before =
        "SELECT x'', oid FROM record WHERE parent = ?1 AND oid < ?3 ORDER BY oid DESC LIMIT 1 OFFSET ?4",
    .countBefore = "SELECT COUNT(*) FROM record WHERE parent = ?1 AND oid < ?3",
};

RecordWalk::RecordWalk(Connection& connection, Oid database, const SortOrder* order)
    : connection_(connection),
      sql_(order == nullptr ? kPlain : kKeyed),
      which_(order == nullptr ? database : order->id) {}

std::optional<RecordPlace> RecordWalk::fromBeginning(std::int64_t steps) {
  return placeOf(connection_.query(sql_.fromBeginning, which_, steps));
}

std::optional<RecordPlace> RecordWalk::fromEnd(std::int64_t steps) {
  return placeOf(connection_.query(sql_.fromEnd, which_, steps));
}

std::optional<RecordPlace> RecordWalk::after(const RecordPlace& place, std::int64_t steps) {
  return placeOf(connection_.query(sql_.after, which_, place.key, place.record, steps));
}

std::optional<RecordPlace> RecordWalk::before(const RecordPlace& place, std::int64_t steps) {
  return placeOf(connection_.query(sql_.before, which_, place.key, place.record, steps));
}

std::optional<RecordPlace> RecordWalk::firstWithin(const Bytes& from, const Bytes& past) {
  return placeOf(
      connection_.query("SELECT key, record FROM record_key WHERE sort_order = ? AND key >= ? AND key < ?"
                        " ORDER BY key, record LIMIT 1",
                        which_, from, past));
}

std::optional<RecordPlace> RecordWalk::lastWithin(const Bytes& from, const Bytes& past) {
  return placeOf(
      connection_.query("SELECT key, record FROM record_key WHERE sort_order = ? AND key >= ? AND key < ?"
                        " ORDER BY key DESC, record DESC LIMIT 1",
                        which_, from, past));
}

std::int64_t RecordWalk::countBefore(const RecordPlace& place) {
  Cursor row = connection_.query(sql_.countBefore, which_, place.key, place.record);
  return row.next() ? row.get<std::int64_t>(0) : 0;
}

}  // namespace emulator
