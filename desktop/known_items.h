// The device's items of one kind, as the items of files are known to be theirs.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>

#include "desktop/item_kind.h"
#include "desktop/session.h"

namespace desktop {

class KnownItems {
 public:
  /// Throws DeviceRefusal when the device can't list its items.
  KnownItems(Session& session, const ItemKind& kind, const std::u16string& identity);

  /// 0 when it is none of them. Titles are looked for as they are spelled, then without regard to case: the device
  /// takes names that differ in nothing else for the same.
  std::uint32_t find(std::string_view uid, const Item& item) const;

 private:
  void readTitles(Session& session, std::span<const std::uint32_t> oids);
  void addTitle(const std::u16string& title, std::uint32_t oid);
  std::uint32_t findUid(std::string_view uid) const;
  std::uint32_t findTitle(const std::u16string& title) const;

  const ItemKind& kind_;
  const std::u16string& identity_;
  std::unordered_set<std::uint32_t> oids_;
  std::map<std::u16string, std::uint32_t> titles_;  ///< empty for kinds that are known by UIDs
  std::map<std::u16string, std::uint32_t> folded_;  ///< the same in lower case
};

}  // namespace desktop
