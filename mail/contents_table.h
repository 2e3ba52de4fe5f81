// The rows of a folder: its messages' identifiers.
#pragma once

#include "mail/entry_collector.h"
#include "service/com_ptr.h"

namespace qorv {

/// A table that is busy, whose query fails, or which gives no rows although it has some, is asked this many
/// times in all: the device's user sees a box for each time that it is busy, and a request has to end.
inline constexpr int kMostFruitlessQueries = 5;

/// The folder's messages, one column: the identifier. Empty when there is no table.
ComPtr<IMAPITable> openContents(IMAPIFolder& folder, ULONG flags);

/// 0 when the table doesn't say.
ULONG rowCount(IMAPITable& contents);

/// Adds the rows from the first on, as many as the table counts. The text is shown whenever the table is
/// busy. A row that is no message's is left out.
void collectRows(IMAPITable& contents, LPCWSTR busyText, EntryCollector& entries);

}  // namespace qorv
