// A data type's change log: one record per changed item, written by the device's change recorder.
//
//   property    type      content
//   0x1201      CEVT_I4   OID of the changed item
//   0x1202      CEVT_I4   sequence number of the change
//   0x1203      CEVT_I4   kind of the change: its low byte; a record without one is a change, 2
//   0x1206      CEVT_BLOB entry identifier, at least 8 bytes: the OID is in bytes 4 to 7
//
// A record may name its item by 0x1201, by 0x1206 or by both; then the later of the two holds.
#pragma once

#include <string>

#include "platform/property_database.h"
#include "service/record_reader.h"
#include "service/unique_handle.h"

namespace qorv {

struct Change {
  DWORD oid = 0;
  DWORD sequence = 0;
  BYTE kind = 0;
};

/// The change that a record tells of. A property of another type than the table's counts as not there.
Change changeOf(std::span<const CEPROPVAL> record);

/// The log is opened in the order of the sequence numbers, newest first as the recorder made it. It is never
/// created here.
class ChangeLog {
 public:
  explicit ChangeLog(const std::u16string& name);

  [[nodiscard]] bool isOpen() const { return static_cast<bool>(database_); }

  /// Gives `take` one change after another, newest first, as long as it returns true. Records that can't be
  /// read are passed over.
  template <typename Take>
  void visit(Take take) const {
    RecordReader reader(database_.get());
    for (CEOID oid = seekFirstRecord(database_.get()); oid != 0; oid = seekNextRecord(database_.get())) {
      const auto record = reader.readAll();
      if (!record.empty() && !take(changeOf(record))) return;
    }
  }

  /// Deletes every record. One that can't be deleted stays, and the walk goes on behind it.
  void clear();

 private:
  UniqueHandle database_;
};

}  // namespace qorv
