// What is known about each type of items: its names, how it travels, and how it stands in files and lists.
//
// Push, pull, list and show work on these rows alone; a type that gets a row is carried by all of them.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>
#include <vector>

#include "desktop/attached_file.h"
#include "desktop/difference.h"
#include "desktop/file_format.h"
#include "desktop/file_style.h"
#include "desktop/item.h"
#include "desktop/pulled_files.h"
#include "desktop/record_layout.h"
#include "desktop/wire.h"

namespace desktop {

/// How an item that is sent, and a file that is there, are known to belong to one of the device's items.
enum class ItemIdentity : std::uint8_t {
  ByUid,    ///< the file has a UID, which names device and item
  ByTitle,  ///< the file is named like the item, and no two items have one name
};

/// The files that accompany the items of a kind. The device leaves those of an item that is read in its
/// temporary folder, and takes those of an item that is added from there.
struct AccompanyingFiles {
  std::vector<AttachedFile>& (*of)(Item& item);
  /// Those that are named in the beginning of a record.
  std::vector<AttachedFile> (*inPart)(WireReader record);
};

struct ItemKind {
  ItemType type;
  const char* name;      ///< "mail", as a person calls them
  const char* singular;  ///< "message", in messages and in UIDs
  const char* plural;    ///< "messages", as they are counted
  const char* folder;    ///< "calendar", where their files are kept
  const FileFormat& format;
  std::span<const char* const> columns;  ///< of a list, which is sorted by the first one
  std::span<const FieldLayout> layouts;  ///< of the fields of their records
  ItemIdentity identity = ItemIdentity::ByUid;
  const AccompanyingFiles* files = nullptr;  ///< null for kinds whose items have none
  /// Writing an item of the kind costs what files don't have of it: one that the device has just so is left alone.
  bool sparesEqual = false;

  /// Reads the record of the given item. Throws ProtocolError for any other bytes.
  Item (*read)(WireReader& record, std::uint32_t oid);
  /// Whether what was read stands for an item that isn't there. Null for kinds of which the device says so.
  bool (*isMissing)(const Item& item) = nullptr;
  /// The title that stands in the beginning of a record; for kinds that are known by it.
  std::u16string (*titleInPart)(WireReader record) = nullptr;
  /// Makes the item one that the device can hold, and notes what that changes. Null for kinds that are sent
  /// as they are.
  void (*adapt)(Item& item, std::vector<std::string>& notes) = nullptr;
  /// The records, at least one, that make the device's item the given one when they are written one after
  /// another. `isThere` tells that the device has the item, so that something of it may have to go.
  std::vector<Bytes> (*write)(const Item& item, bool isThere);
  std::vector<Difference> (*compare)(const Item& sent, const Item& device);
  /// As a file of the format. Throws DeviceRefusal when the item has no meaning in one.
  std::string (*fileText)(const Item& item, const std::string& uid, const FileStyle& style);
  /// What a person knows the item by.
  std::u16string (*title)(const Item& item);
  /// One for each column.
  std::vector<std::string> (*cells)(const Item& item);
  nlohmann::json (*toJson)(const Item& item);
  /// Where the files of pulled items go. Throws InputError when they can't.
  std::unique_ptr<PulledFiles> (*openFiles)(const ItemKind& kind, std::u16string_view deviceIdentity,
                                            const std::filesystem::path& folder) = openFilesByUid;
};

extern const ItemKind kAppointmentKind;
extern const ItemKind kTaskKind;
extern const ItemKind kContactKind;
extern const ItemKind kMailKind;
extern const ItemKind kNoteKind;

/// In the order in which they are sent and written.
std::span<const ItemKind* const> itemKinds();

const ItemKind& kindOf(const Item& item);

}  // namespace desktop
