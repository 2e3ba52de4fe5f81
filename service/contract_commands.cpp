// The commands on contracts and change logs. The desktop creates a contract, lists what changed since its
// last commit, and commits; after it listed all items instead, the commit starts the change log anew.

#include "service/api_base.h"
#include "service/change_counter.h"
#include "service/change_log.h"
#include "service/contracts.h"

namespace qorv {

namespace {

/// A change in a reply: u32 OID, u8 kind.
constexpr std::size_t kChangeEntrySize = sizeof(DWORD) + sizeof(BYTE);

/// Where the list of changes begins: 0 without a contract, when every change is news. Nothing when there is no
/// telling.
std::optional<DWORD> lastCommitted(const ContractLookup& contract) {
  if (!contract.isOpen()) return std::nullopt;
  return contract.isFound() ? contract.sequence() : std::optional<DWORD>(0);
}

/// The sequence number up to which a desktop that commits now has seen everything.
DWORD sequenceToCommit(const std::u16string& logName, bool afterFullListing) {
  ChangeCounter counter(logName);
  const DWORD sequence = counter.read();
  if (!afterFullListing) return sequence;
  if (ChangeLog log(logName); log.isOpen()) log.clear();
  counter.reset();
  return 0;
}

}  // namespace

RequestText CQorvApiBase::readContractName() {
  DWORD position = 0;
  skipTypeByte(position);
  return ReadString(requestCursor_, position);
}

bool CQorvApiBase::answerContract(bool succeeded) {
  writeStatus(succeeded ? 1 : 0, succeeded ? kStatusNone : kStatusContractFailed);
  return succeeded;
}

bool CQorvApiBase::CreateContract() {
  const RequestText name = readContractName();
  if (requestCut()) return answerContract(false);
  ContractLookup contract(name);
  return answerContract(contract.isOpen() && contract.write(dataType(), 0));
}

bool CQorvApiBase::DeleteContract() {
  const RequestText name = readContractName();
  if (requestCut()) return false;
  ContractLookup contract(name);
  if (!contract.isOpen()) return false;
  contract.erase();
  // Kept: desktops delete a contract to be rid of it and don't care whether it was there.
  return answerContract(true);
}

bool CQorvApiBase::FindContract() {
  const RequestText name = readContractName();
  return answerContract(!requestCut() && ContractLookup(name).isFound());
}

/// False when the reply has no room for it.
bool CQorvApiBase::listChange(const Change& change) {
  if (!AcceptItem(change.oid, change.sequence)) return true;
  std::array<BYTE, kChangeEntrySize> entry{};
  storeDword(entry.data(), change.oid);
  entry.back() = change.kind;
  if (!WriteBytes(entry)) return false;
  ++listHeader_.count;
  return true;
}

/// A log that can't be opened is an empty one.
void CQorvApiBase::listChangesOf(const RequestText& name) {
  // Declared first, so that the contract database is closed before the log.
  std::optional<ChangeLog> log;
  const ContractLookup contract(name);
  const auto sequence = lastCommitted(contract);
  if (!sequence) {
    listHeader_.status = kStatusContractFailed;
    return;
  }
  if (traits_.changeLog) log.emplace(*traits_.changeLog);
  if (log && log->isOpen()) {
    // Newest first: the first change that the desktop knows ends the list, however long the log goes on.
    log->visit([&](const Change& change) { return change.sequence > *sequence && listChange(change); });
  }
  // Nobody shall take a part for the whole.
  listHeader_.result = bufferFull() ? 0 : 1;
}

bool CQorvApiBase::GetChanges() {
  setResponseLength(0);
  const RequestText name = readContractName();
  writeListHeader();
  listHeader_.result = 0;
  if (requestCut()) {
    listHeader_.status = kStatusContractFailed;
  } else {
    listChangesOf(name);
  }
  copyListHeader(0);
  return listHeader_.result != 0;
}

bool CQorvApiBase::CommitChanges(bool afterFullListing) {
  const RequestText name = readContractName();
  if (requestCut()) return answerContract(false);
  ContractLookup contract(name);
  if (!contract.isOpen()) return answerContract(false);
  // A type without a log has no changes to count.
  const DWORD sequence = traits_.changeLog ? sequenceToCommit(*traits_.changeLog, afterFullListing) : 0;
  return answerContract(contract.write(dataType(), sequence));
}

}  // namespace qorv
