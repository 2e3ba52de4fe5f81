#include "emulator/database/open_database.h"

#include <algorithm>
#include <array>

#include "platform/errors.h"

namespace emulator {
namespace {

struct ValueSeek {
  DWORD type;
  Oid (SeekPointer::*move)(ByteView value);
};

constexpr std::array kValueSeeks{
    ValueSeek{CEDB_SEEK_VALUESMALLER, &SeekPointer::toSmaller},
    ValueSeek{CEDB_SEEK_VALUEFIRSTEQUAL, &SeekPointer::toFirstEqual},
    ValueSeek{CEDB_SEEK_VALUEGREATER, &SeekPointer::toGreater},
    ValueSeek{CEDB_SEEK_VALUENEXTEQUAL, &SeekPointer::toNextEqual},
};

DWORD resultOf(Oid reached) {
  return reached != 0 ? ERROR_SUCCESS : ERROR_NO_MORE_ITEMS;
}

}  // namespace

DWORD OpenDatabase::seek(DWORD type, DWORD_PTR value) {
  const auto number = static_cast<DWORD>(value);
  switch (type) {
    case CEDB_SEEK_CEOID:
      return pointer_.to(number) != 0 ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
    case CEDB_SEEK_BEGINNING:
      return resultOf(pointer_.toBeginning(number));
    case CEDB_SEEK_END:
      return resultOf(pointer_.toEnd(std::int64_t{number} - 1));  // the last record is 1
    case CEDB_SEEK_CURRENT:
      return resultOf(pointer_.by(static_cast<LONG>(number)));
    default:
      return seekValue(type, reinterpret_cast<const CEPROPVAL*>(value));
  }
}

DWORD OpenDatabase::seekValue(DWORD type, const CEPROPVAL* value) {
  const auto* const row = std::ranges::find(kValueSeeks, type, &ValueSeek::type);
  if (row == kValueSeeks.end() || order_ == nullptr || value == nullptr) return ERROR_INVALID_PARAMETER;
  const auto sought = propertyOf(*value);
  if (!sought || sought->id != order_->properties.front().id) return ERROR_INVALID_PARAMETER;
  return resultOf((pointer_.*row->move)(sought->data));
}

}  // namespace emulator
