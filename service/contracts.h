// The contract database: per named sync relationship, how far the desktop has taken a data type's changes.
//
//   property    type          content
//   0x1205      CEVT_LPWSTR   name, as the desktop sent it
//   0x1204      CEVT_I4       data type code of the handler that wrote the record
//   0x1202      CEVT_I4       committed sequence number
#pragma once

#include <optional>

#include "channel/request_reader.h"
#include "channel/wire.h"
#include "platform/property_database.h"
#include "service/unique_handle.h"

namespace qorv {

/// The contract database, open and standing on the contract of a name. A database that isn't there is made.
/// The name alone decides, letter by letter, whatever data type wrote the record: desktops give each of
/// their relationships a name of its own.
class ContractLookup {
 public:
  /// `name` must outlive the lookup.
  explicit ContractLookup(const RequestText& name);

  /// False when the database could neither be opened nor made; then nothing else may be called but isFound.
  [[nodiscard]] bool isOpen() const { return static_cast<bool>(database_); }
  [[nodiscard]] bool isFound() const { return record_ != 0; }

  /// The sequence number of the contract that was found; nothing when its record has none. To be called
  /// before the record is written.
  [[nodiscard]] std::optional<DWORD> sequence() const;
  /// Writes the contract that was found, or a new one. False when the platform refuses.
  bool write(DataType type, DWORD sequence);
  /// Deletes the contract that was found, if one was.
  void erase();

 private:
  const RequestText& name_;
  UniqueHandle database_;
  CEOID record_ = 0;
};

}  // namespace qorv
