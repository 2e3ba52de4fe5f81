// Contracts: what changed on the device since a desktop last took note of it.
//
// The device keeps a log of changes for each type, and for each contract the number of the change up to which
// its desktop has taken note. A contract is known by its name alone, whatever the type: under one name, two
// types would share one number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/session.h"

namespace desktop {

/// The device's own numbers; it may have others.
enum class ChangeKind : std::uint8_t { Added = 1, Changed = 2, Deleted = 3 };

struct Change {
  std::uint32_t oid = 0;
  ChangeKind kind = ChangeKind::Changed;

  friend bool operator==(const Change&, const Change&) = default;
};

/// `added`, `changed`, `deleted`, or `of kind 7`
std::string spell(ChangeKind kind);

/// False also when the device can't open its contracts.
bool hasContract(Session& session, ItemType type, std::u16string_view name);

/// The changes since the contract's last commit, the newest first, one for each item. For a contract that
/// isn't there all that the device has on record. Throws DeviceRefusal when the device has no number for the
/// contract, and when the changes are too many for it to list.
std::vector<Change> listChanges(Session& session, ItemType type, std::u16string_view name);

/// The notes that changed since the last commit, whatever its contract: the device compares them with what they
/// were then. Nothing when there was none yet.
std::optional<std::vector<Change>> listNoteChanges(Session& session, std::u16string_view name);

/// Makes the changes up to now old news to the contract, which is made when it isn't there. To be called
/// after `listChanges`: after a listing of all items instead, the device would empty the log of changes, for
/// all contracts. The device takes 2 seconds for it, more while it is being changed. Throws DeviceRefusal when
/// it can't.
void commitChanges(Session& session, ItemType type, std::u16string_view name);

/// Nothing happens to a contract that isn't there. Throws DeviceRefusal when the device can't open its
/// contracts.
void deleteContract(Session& session, ItemType type, std::u16string_view name);

}  // namespace desktop
