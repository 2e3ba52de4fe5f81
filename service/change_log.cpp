#include "service/change_log.h"

#include "channel/wire.h"
#include "service/property_database.h"

namespace qorv {

namespace {

constexpr CEPROPID kOid = 0x12010003;
constexpr CEPROPID kSequence = 0x12020003;
constexpr CEPROPID kKind = 0x12030003;
constexpr CEPROPID kEntryId = 0x12060041;

constexpr DWORD kOidInEntryId = 4;
constexpr DWORD kLeastEntryId = kOidInEntryId + sizeof(DWORD);

/// What a record without a kind means.
constexpr BYTE kChanged = 2;

/// Takes what one property says; a later one of the record prevails over an earlier.
void apply(const CEPROPVAL& property, Change& change) {
  switch (property.propid) {
    case kOid:
      change.oid = static_cast<DWORD>(property.val.lVal);
      break;
    case kSequence:
      change.sequence = static_cast<DWORD>(property.val.lVal);
      break;
    case kKind:
      change.kind = static_cast<BYTE>(property.val.lVal);
      break;
    case kEntryId:
      if (const CEBLOB& id = property.val.blob; id.dwCount >= kLeastEntryId) {
        change.oid = loadDword(id.lpb + kOidInEntryId);
      }
      break;
    default:
      break;
  }
}

}  // namespace

Change changeOf(std::span<const CEPROPVAL> record) {
  Change change{.kind = kChanged};
  for (const CEPROPVAL& property : record) apply(property, change);
  return change;
}

ChangeLog::ChangeLog(const std::u16string& name) : database_(openStoreDatabase(name, kSequence)) {}

void ChangeLog::clear() {
  const HANDLE database = database_.get();
  for (CEOID oid = seekFirstRecord(database); oid != 0; oid = seekNextRecord(database)) {
    CeDeleteRecord(database, oid);
  }
}

}  // namespace qorv
