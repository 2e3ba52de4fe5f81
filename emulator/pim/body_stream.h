// An item's body as a stream of ANSI text.
#pragma once

#include <vector>

#include "emulator/pim/com_object.h"
#include "emulator/pim/com_reference.h"
#include "emulator/pim/item_core.h"
#include "emulator/system/unsupported_stream.h"

namespace emulator {

/// What was written becomes the item's body with Commit, and is stored when the item is saved.
class BodyStream final : public UnsupportedStream<ComObject<IStream>> {
 public:
  /// The stream keeps its item alive. One for writing begins empty: it replaces the body.
  BodyStream(ItemCore& item, IUnknown* owner, std::size_t bodyPlace, std::vector<std::uint8_t> bytes,
             bool writable);

  HRESULT Read(void* buffer, ULONG count, ULONG* bytesRead) override;
  HRESULT Write(const void* buffer, ULONG count, ULONG* bytesWritten) override;
  HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override;
  HRESULT SetSize(ULARGE_INTEGER size) override;
  HRESULT Commit(DWORD flags) override;
  HRESULT Stat(STATSTG* statistics, DWORD flag) override;

 private:
  ItemCore& item_;
  ComReference<IUnknown> owner_;
  std::size_t bodyPlace_;
  std::vector<std::uint8_t> bytes_;
  std::size_t position_ = 0;
  bool writable_;
};

}  // namespace emulator
