#include "pim/end_kind.h"

#include "platform/errors.h"
#include "platform/system.h"
#include "service/com_ptr.h"

namespace qorv {

namespace {

constexpr std::size_t kPatternTypeOffset = 6;
constexpr DWORD kEndsOnDate = 0x2021;
constexpr DWORD kEndsAfterOccurrences = 0x2022;

/// Where the end type stands: behind pattern data of a size that the pattern type (with the calendar type
/// above it) tells. Other pattern and calendar types are read like the first: such items have always come out
/// as never ending.
std::size_t endTypeOffset(DWORD patternType) {
  switch (patternType) {
    case 1:
    case 2:
      return 26;
    case 3:
      return 30;
    default:
      return 22;
  }
}

std::optional<DWORD> numberAt(std::span<const BYTE> blob, std::size_t offset) {
  if (blob.size() < offset + sizeof(DWORD)) return std::nullopt;
  return loadDword(blob.data() + offset);
}

std::span<const BYTE> bytesOf(const CEBLOB& blob) {
  return blob.lpb ? std::span<const BYTE>(blob.lpb, blob.dwCount) : std::span<const BYTE>();
}

/// Property values in one block of the process heap.
class ItemProperties {
 public:
  ItemProperties(IItem& item, CEPROPID id) : heap_(GetProcessHeap()) {
    ULONG size = 0;
    if (FAILED(item.GetProps(&id, CEDB_ALLOWREALLOC, 1, &values_, &size, heap_))) release();
  }
  ItemProperties(const ItemProperties&) = delete;
  ItemProperties& operator=(const ItemProperties&) = delete;
  ~ItemProperties() { release(); }

  /// Null when the call failed.
  [[nodiscard]] const CEPROPVAL* first() const { return values_; }

 private:
  void release() {
    if (values_) HeapFree(heap_, 0, values_);
    values_ = nullptr;
  }

  HANDLE heap_;
  CEPROPVAL* values_ = nullptr;
};

}  // namespace

std::optional<EndKind> storedEndKind(std::span<const BYTE> blob) {
  const auto patternType = numberAt(blob, kPatternTypeOffset);
  if (!patternType) return std::nullopt;
  const auto endType = numberAt(blob, endTypeOffset(*patternType));
  if (!endType) return std::nullopt;
  if (*endType == kEndsOnDate) return EndKind::OnDate;
  return *endType == kEndsAfterOccurrences ? EndKind::AfterOccurrences : EndKind::Never;
}

bool correctEndKind(IPOutlookApp& application, DWORD oid, CEPROPID property, RecurrenceBlock& block) {
  ComPtr<IDispatch> any;
  if (FAILED(application.GetItemFromOid(static_cast<LONG>(oid), any.put())) || !any) return false;
  const auto item = queryInterface<IItem>(*any);
  if (!item) return false;
  const ItemProperties properties(*item, property);
  const CEPROPVAL* stored = properties.first();
  if (!stored) return false;
  block.setEndKind(EndKind::AfterOccurrences);
  if (stored->wFlags == CEDB_PROPNOTFOUND) return true;
  if (const auto kind = storedEndKind(bytesOf(stored->val.blob))) block.setEndKind(*kind);
  return true;
}

}  // namespace qorv
