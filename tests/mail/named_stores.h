// A messaging session whose stores have given names; the device's own has one store only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "emulator/messaging/mail_buffers.h"
#include "emulator/messaging/unsupported_members.h"

namespace test {

/// Lives in the test, whatever its references.
template <typename Base>
class Unowned : public Base {
 public:
  HRESULT QueryInterface(REFIID, void**) override { return E_NOTIMPL; }
  ULONG AddRef() override { return ++references; }
  ULONG Release() override { return --references; }

  ULONG references = 0;
};

class NamedStoresTable final : public Unowned<emulator::UnsupportedTableMembers<IMAPITable>> {
 public:
  /// The memory is that of the device's library, which frees the rows.
  NamedStoresTable(emulator::PlatformMemory& memory, std::vector<std::u16string> names)
      : buffers_(memory), names_(std::move(names)) {}

  HRESULT SetColumns(SPropTagArray*, ULONG) override { return S_OK; }
  HRESULT GetRowCount(ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT SeekRow(BOOKMARK, LONG, LONG*) override { return E_NOTIMPL; }
  HRESULT QueryPosition(ULONG*, ULONG*, ULONG*) override { return E_NOTIMPL; }
  HRESULT Restrict(SRestriction*, ULONG) override { return E_NOTIMPL; }
  HRESULT SortTable(SSortOrderSet*, ULONG) override { return E_NOTIMPL; }
  /// Each row's identifier is one byte, its place; a store without a name has an error in its stead.
  HRESULT QueryRows(LONG count, ULONG, SRowSet** rows) override {
    std::vector<emulator::AnsweredRow> answered;
    for (std::size_t i = 0; i < names_.size() && i < static_cast<std::size_t>(count); ++i) {
      emulator::MailValue name = names_[i];
      if (names_[i].empty()) name = emulator::noValue();
      answered.push_back(
          {{PR_DISPLAY_NAME_W, name}, {PR_ENTRYID, emulator::Bytes{static_cast<std::uint8_t>(i)}}});
    }
    *rows = buffers_.rows(answered);
    return S_OK;
  }

 private:
  emulator::MailBuffers buffers_;
  std::vector<std::u16string> names_;
};

class NamedStores final : public Unowned<emulator::UnsupportedSessionMembers<IMAPISession>> {
 public:
  NamedStores(emulator::PlatformMemory& memory, std::vector<std::u16string> names)
      : table(memory, std::move(names)) {}

  HRESULT GetMsgStoresTable(ULONG, IMAPITable** given) override {
    table.AddRef();
    *given = &table;
    return S_OK;
  }
  /// Notes which store was asked for, and gives none.
  HRESULT OpenMsgStore(ULONG_PTR, ULONG size, BYTE* entryId, LPCIID, ULONG, IMsgStore**) override {
    opened = size == 1 ? int{*entryId} : kDefaultStore;
    return MAPI_E_NOT_FOUND;
  }
  HRESULT OpenEntry(ULONG, BYTE*, LPCIID, ULONG, ULONG*, IUnknown**) override { return E_NOTIMPL; }
  HRESULT CompareEntryIDs(ULONG, BYTE*, ULONG, BYTE*, ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT Logoff(ULONG_PTR, ULONG, ULONG) override { return E_NOTIMPL; }

  static constexpr int kDefaultStore = -1;
  int opened = -2;
  NamedStoresTable table;
};

}  // namespace test
