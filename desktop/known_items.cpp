#include "desktop/known_items.h"

#include "desktop/item_reader.h"
#include "desktop/item_text.h"
#include "desktop/item_uid.h"
#include "desktop/kind_reader.h"

namespace desktop {

KnownItems::KnownItems(Session& session, const ItemKind& kind, const std::u16string& identity)
    : kind_(kind), identity_(identity) {
  const auto oids = listItems(session, kind.type);
  oids_.insert(oids.begin(), oids.end());
  if (kind.identity == ItemIdentity::ByTitle) readTitles(session, oids);
}

std::uint32_t KnownItems::find(std::string_view uid, const Item& item) const {
  return kind_.identity == ItemIdentity::ByUid ? findUid(uid) : findTitle(kind_.title(item));
}

/// Of an item that is too large to be sent the beginning comes, and the title in it.
void KnownItems::readTitles(Session& session, std::span<const std::uint32_t> oids) {
  std::u16string begun;
  const KindSink sink{
      [&](const Item& item, std::uint32_t oid, const auto&) { addTitle(kind_.title(item), oid); },
      [&](std::uint32_t oid, const std::string&) { addTitle(begun, oid); },
      {},
      [&](WireReader record) { begun = kind_.titleInPart(record); },
  };
  readItems(session, kind_, oids, FilesWanted::No, sink);
}

void KnownItems::addTitle(const std::u16string& title, std::uint32_t oid) {
  if (title.empty()) return;
  titles_.emplace(title, oid);
  folded_.emplace(foldCase(title), oid);
}

std::uint32_t KnownItems::findUid(std::string_view uid) const {
  const std::optional<std::uint32_t> oid = oidOfUid(kind_, identity_, uid);
  return oid && oids_.contains(*oid) ? *oid : 0;
}

std::uint32_t KnownItems::findTitle(const std::u16string& title) const {
  if (const auto titled = titles_.find(title); titled != titles_.end()) return titled->second;
  const auto alike = folded_.find(foldCase(title));
  return alike == folded_.end() ? 0 : alike->second;
}

}  // namespace desktop
