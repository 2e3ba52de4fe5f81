#include "mail/contents_table.h"

#include <algorithm>

#include "mail/properties.h"
#include "platform/windows.h"

namespace qorv {

namespace {

constexpr ULONG kBusyWait = 2000;  // milliseconds

void addRow(const SRow& row, EntryCollector& entries) {
  const auto values = valuesOf(row);
  if (values.empty() || values.front().ulPropTag != PR_ENTRYID) return;
  if (const auto entryId = copyEntryId(values.front().Value.bin)) entries.add(*entryId);
}

/// The number of rows that came.
std::size_t collectSome(IMAPITable& contents, ULONG remaining, EntryCollector& entries) {
  const RowSet found(contents, static_cast<LONG>(std::min<ULONG>(remaining, INT32_MAX)));
  for (const SRow& row : found.rows()) addRow(row, entries);
  return found.rows().size();
}

bool isBusy(IMAPITable& contents) {
  return contents.WaitForCompletion(0, kBusyWait, nullptr) == MAPI_E_TIMEOUT;
}

}  // namespace

ComPtr<IMAPITable> openContents(IMAPIFolder& folder, ULONG flags) {
  ComPtr<IMAPITable> contents;
  if (FAILED(folder.GetContentsTable(flags, contents.put())) || !contents) return {};
  contents->SetColumns(TagArray<1>{.tags = {PR_ENTRYID}}.get(), 0);
  return contents;
}

ULONG rowCount(IMAPITable& contents) {
  ULONG count = 0;
  return SUCCEEDED(contents.GetRowCount(0, &count)) ? count : 0;
}

void collectRows(IMAPITable& contents, LPCWSTR busyText, EntryCollector& entries) {
  const ULONG total = rowCount(contents);
  contents.SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
  int fruitless = 0;
  for (std::size_t fetched = 0; fetched < total && fruitless < kMostFruitlessQueries;) {
    std::size_t came = 0;
    if (isBusy(contents)) {
      MessageBoxW(nullptr, busyText, u"ERROR", MB_OK);
    } else {
      came = collectSome(contents, total - static_cast<ULONG>(fetched), entries);
    }
    fetched += came;
    if (came == 0) ++fruitless;
  }
}

}  // namespace qorv
