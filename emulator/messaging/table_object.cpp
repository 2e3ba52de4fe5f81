#include "emulator/messaging/table_object.h"

namespace emulator {
namespace {

constexpr ULONG kMostSorts = 16;

/// A position moved by a signed number of rows, within the table.
std::size_t moved(std::size_t position, LONG rows, std::size_t count) {
  const std::int64_t target = static_cast<std::int64_t>(position) + rows;
  return static_cast<std::size_t>(std::clamp<std::int64_t>(target, 0, static_cast<std::int64_t>(count)));
}

}  // namespace

TableObject::TableObject(MailContext& context, std::unique_ptr<RowSource> source)
    : UnsupportedTableMembers(context, ModelClass::MailTable),
      source_(std::move(source)),
      columns_(source_->defaultColumns()) {}

HRESULT TableObject::SetColumns(SPropTagArray* columns, ULONG) {
  if (columns == nullptr || columns->cValues == 0 || columns->cValues > kMostTags) return E_INVALIDARG;
  return atBoundary([&] {
    const PropertyTag* const first = columns->aulPropTag;
    columns_.assign(first, first + columns->cValues);
    return S_OK;
  });
}

HRESULT TableObject::GetRowCount(ULONG, ULONG* count) {
  if (count == nullptr) return E_INVALIDARG;
  return atBoundary([&] {
    *count = static_cast<ULONG>(source_->count());
    return S_OK;
  });
}

HRESULT TableObject::SeekRow(BOOKMARK origin, LONG rows, LONG* sought) {
  if (origin > BOOKMARK_END) return E_INVALIDARG;
  return atBoundary([&] {
    const std::size_t count = source_->count();
    const std::size_t from = origin == BOOKMARK_BEGINNING ? 0
                             : origin == BOOKMARK_CURRENT ? std::min(position_, count)
                                                          : count;
    position_ = moved(from, rows, count);
    if (sought != nullptr) {
      *sought = static_cast<LONG>(static_cast<std::int64_t>(position_) - static_cast<std::int64_t>(from));
    }
    return S_OK;
  });
}

HRESULT TableObject::QueryPosition(ULONG* row, ULONG* numerator, ULONG* denominator) {
  if (row == nullptr || numerator == nullptr || denominator == nullptr) return E_INVALIDARG;
  return atBoundary([&] {
    const std::size_t count = source_->count();
    *row = *numerator = static_cast<ULONG>(std::min(position_, count));
    *denominator = static_cast<ULONG>(std::max<std::size_t>(count, 1));
    return S_OK;
  });
}

HRESULT TableObject::Restrict(SRestriction* restriction, ULONG) {
  return restriction == nullptr ? S_OK : MAPI_E_NO_SUPPORT;
}

HRESULT TableObject::SortTable(SSortOrderSet* order, ULONG) {
  if (order == nullptr || order->cSorts > kMostSorts) return E_INVALIDARG;
  if (order->cCategories != 0) return MAPI_E_NO_SUPPORT;
  return atBoundary([&] {
    const SSortOrder* const first = order->aSort;
    const HRESULT result = source_->sort({first, order->cSorts});
    if (SUCCEEDED(result)) position_ = 0;
    return result;
  });
}

HRESULT TableObject::QueryRows(LONG count, ULONG flags, SRowSet** rows) {
  if (rows == nullptr) return E_INVALIDARG;
  *rows = nullptr;
  return atBoundary([&] {
    const std::size_t total = source_->count();
    const std::size_t from = std::min(position_, total);
    const std::size_t to = moved(from, count, total);
    std::vector<AnsweredRow> answered;
    answered.reserve(to > from ? to - from : from - to);
    source_->read(std::min(from, to), answered.capacity(), [&](const PropertyLookup& lookup) {
      AnsweredRow& row = answered.emplace_back();
      row.reserve(columns_.size());
      for (const PropertyTag column : columns_) row.push_back({column, lookup(column)});
    });
    *rows = context().buffers.rows(answered);
    if (*rows == nullptr) return MAPI_E_NOT_ENOUGH_MEMORY;
    if ((flags & TBL_NOADVANCE) == 0) position_ = to;
    return S_OK;
  });
}

HRESULT openTable(MailContext& context, std::unique_ptr<RowSource> source, IMAPITable** table) {
  *table = new TableObject(context, std::move(source));
  return S_OK;
}

}  // namespace emulator
