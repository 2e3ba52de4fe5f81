#include "desktop/contracts.h"

#include "desktop/device_error.h"
#include "desktop/list_header.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// u32 OID, u8 kind
constexpr std::size_t kChangeSize = 5;

Bytes ask(Session& session, Command command, ItemType type, std::u16string_view name) {
  WireWriter arguments;
  arguments.text(name);
  return session.request(command, type, arguments.take());
}

/// The answer of a command that only says whether it was done.
bool isDone(const Bytes& reply) {
  WireReader reader(reply);
  const bool done = reader.byte() == 1;
  reader.byte();  // the status adds nothing to a refusal
  reader.expectEnd();
  return done;
}

[[noreturn]] void refuseList(std::u16string_view name, std::uint8_t status) {
  constexpr std::uint8_t kNoNumber = 1;
  const std::string contract = "contract " + quoted(name);
  if (status == kNoNumber) throw DeviceRefusal(contract + ": the device can't read up to which change it is");
  throw DeviceRefusal(contract + ": there are more changes than the device can list");
}

std::vector<Change> readChanges(WireReader& reader, const ListHeader& header) {
  expectEntries(reader, header, kChangeSize);
  std::vector<Change> changes(header.count);
  for (Change& change : changes) {
    change.oid = reader.number();
    change.kind = static_cast<ChangeKind>(reader.byte());
  }
  return changes;
}

}  // namespace

std::string spell(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return "added";
    case ChangeKind::Changed:
      return "changed";
    case ChangeKind::Deleted:
      return "deleted";
  }
  return "of kind " + std::to_string(static_cast<int>(kind));
}

bool hasContract(Session& session, ItemType type, std::u16string_view name) {
  return isDone(ask(session, Command::FindContract, type, name));
}

std::vector<Change> listChanges(Session& session, ItemType type, std::u16string_view name) {
  const Bytes reply = ask(session, Command::GetChanges, type, name);
  WireReader reader(reply);
  const ListHeader header = readListHeader(reader);
  if (!header.done) refuseList(name, header.status);
  return readChanges(reader, header);
}

std::optional<std::vector<Change>> listNoteChanges(Session& session, std::u16string_view name) {
  const Bytes reply = ask(session, Command::GetChanges, ItemType::Note, name);
  WireReader reader(reply);
  const ListHeader header = readListHeader(reader);
  if (!header.done && header.count > 0) refuseList(name, header.status);
  if (!header.done) return std::nullopt;
  return readChanges(reader, header);
}

void commitChanges(Session& session, ItemType type, std::u16string_view name) {
  if (isDone(ask(session, Command::CommitChanges, type, name))) return;
  throw DeviceRefusal("contract " + quoted(name) + ": the device can't commit it");
}

void deleteContract(Session& session, ItemType type, std::u16string_view name) {
  const Bytes reply = ask(session, Command::DeleteContract, type, name);
  if (!reply.empty() && isDone(reply)) return;
  throw DeviceRefusal("contract " + quoted(name) + ": the device can't open its contracts");
}

}  // namespace desktop
