// A table: a cursor over rows, and the columns that it shows of them.
#pragma once

#include <memory>

#include "emulator/messaging/messaging_object.h"
#include "emulator/messaging/row_source.h"
#include "emulator/messaging/unsupported_members.h"

namespace emulator {

class TableObject final : public UnsupportedTableMembers<MessagingObject<IMAPITable>> {
 public:
  TableObject(MailContext& context, std::unique_ptr<RowSource> source);

  HRESULT SetColumns(SPropTagArray* columns, ULONG flags) override;
  HRESULT GetRowCount(ULONG flags, ULONG* count) override;
  HRESULT SeekRow(BOOKMARK origin, LONG rows, LONG* sought) override;
  HRESULT QueryPosition(ULONG* row, ULONG* numerator, ULONG* denominator) override;
  /// There are no restrictions but none at all.
  HRESULT Restrict(SRestriction* restriction, ULONG flags) override;
  HRESULT SortTable(SSortOrderSet* order, ULONG flags) override;
  HRESULT QueryRows(LONG count, ULONG flags, SRowSet** rows) override;

 private:
  std::unique_ptr<RowSource> source_;
  std::vector<PropertyTag> columns_;
  std::size_t position_ = 0;
};

/// A table over a source, as a call hands it out.
HRESULT openTable(MailContext& context, std::unique_ptr<RowSource> source, IMAPITable** table);

}  // namespace emulator
