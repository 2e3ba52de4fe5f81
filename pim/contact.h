// The handler of contacts: two dates (tags 1 and 2) and 48 texts (tags 3 to 50), as contact_fields.h lists them.
#pragma once

#include "service/api_base.h"

namespace qorv {

class CCEContact : public CQorvApiBase {
 public:
  CCEContact();

  bool ReadItemRecord(IDispatch* item, DWORD oid) override;
  /// False when the save failed, or the record was cut short and therefore not saved.
  bool WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                       ItemReplyHeader& header) override;
};

}  // namespace qorv
