#include "emulator/arm/layout.h"

namespace emulator::arm {

namespace {

constexpr GuestAddress kWord = 4;

/// What a union of numbers and pointers holds.
enum class Holds { Number, Text, Counted, Identifier };

Holds chosenBy(const CEPROPVAL& property) {
  if ((property.wFlags & (CEDB_PROPDELETE | CEDB_PROPNOTFOUND)) != 0) return Holds::Number;
  switch (static_cast<WORD>(property.propid)) {
    case CEVT_LPWSTR:
      return Holds::Text;
    case CEVT_BLOB:
      return Holds::Counted;
    default:
      return Holds::Number;
  }
}

Holds chosenBy(const SPropValue& property) {
  switch (property.ulPropTag & 0xFFFF) {
    case PT_UNICODE:
    case PT_STRING8:
      return Holds::Text;
    case PT_BINARY:
      return Holds::Counted;
    case PT_CLSID:
      return Holds::Identifier;
    default:
      return Holds::Number;
  }
}

/// Two words at most, which both sides lay out alike.
template <typename Union>
void loadNumber(Crossing& crossing, GuestAddress address, Union& value) {
  std::memcpy(&value, crossing.memory().at(address, 2 * kWord), 2 * kWord);
}

template <typename Union>
void storeNumber(Crossing& crossing, GuestAddress address, const Union& value) {
  std::memcpy(crossing.memory().writableAt(address, 2 * kWord), &value, 2 * kWord);
}

}  // namespace

namespace layout_detail {

void loadChosen(Crossing& crossing, GuestAddress address, CEPROPVAL& property) {
  const auto word = crossing.memory().read<std::uint32_t>(address);
  switch (chosenBy(property)) {
    case Holds::Text:
      property.val.lpwstr = crossing.text<WCHAR>(word);
      return;
    case Holds::Counted:
      property.val.blob = load<CEBLOB>(crossing, address);
      return;
    default:
      loadNumber(crossing, address, property.val);
  }
}

void loadChosen(Crossing& crossing, GuestAddress address, SPropValue& property) {
  const auto word = crossing.memory().read<std::uint32_t>(address);
  switch (chosenBy(property)) {
    case Holds::Text:
      property.Value.lpszW = crossing.text<WCHAR>(word);
      return;
    case Holds::Counted:
      property.Value.bin = load<SBinary>(crossing, address);
      return;
    case Holds::Identifier:
      property.Value.lpguid = crossing.direct<GUID>(word);
      return;
    case Holds::Number:
      loadNumber(crossing, address, property.Value);
  }
}

void loadChosen(Crossing& crossing, GuestAddress address, MAPINAMEID& name) {
  const auto word = crossing.memory().read<std::uint32_t>(address);
  if (name.ulKind == MNID_STRING) {
    name.Kind.lpwstrName = crossing.text<WCHAR>(word);
  } else {
    name.Kind.lID = static_cast<LONG>(word);
  }
}

void storeChosen(Crossing& crossing, GuestAddress address, const CEPROPVAL& property) {
  switch (chosenBy(property)) {
    case Holds::Text:
      return store(crossing, address, property.val.lpwstr);
    case Holds::Counted:
      return store(crossing, address, property.val.blob);
    default:
      return storeNumber(crossing, address, property.val);
  }
}

void storeChosen(Crossing& crossing, GuestAddress address, const SPropValue& property) {
  switch (chosenBy(property)) {
    case Holds::Text:
      return store(crossing, address, property.Value.lpszW);
    case Holds::Counted:
      return store(crossing, address, property.Value.bin);
    case Holds::Identifier:
      return store(crossing, address, property.Value.lpguid);
    case Holds::Number:
      return storeNumber(crossing, address, property.Value);
  }
}

void storeChosen(Crossing& crossing, GuestAddress address, const MAPINAMEID& name) {
  if (name.ulKind == MNID_STRING) return store(crossing, address, name.Kind.lpwstrName);
  store(crossing, address, name.Kind.lID);
}

}  // namespace layout_detail

void relayRows(Crossing& crossing, SRowSet* rows) {
  const GuestAddress address = crossing.word(rows);
  const ULONG count = rows->cRows;
  const SRow* const first = rows->aRow;
  for (ULONG i = 0; i < count; ++i) {
    const SRow row = first[i];
    if (row.lpProps != nullptr) relay(crossing, row.lpProps, row.cValues);
    store(crossing, address + kWord + i * kGuestSize<SRow>, row);
  }
}

}  // namespace emulator::arm
