// The handler of ink notes, which are files and not items of the object model.
#pragma once

#include "ink/rich_ink_library.h"
#include "service/api_base.h"

namespace qorv {

struct FoundFile;

/// Note fields.
namespace note_tag {
inline constexpr DWORD kName = 1;
inline constexpr DWORD kContent = 2;
}  // namespace note_tag

/// A note is known by its file's object identifier. Changes are found by comparing the files with what they
/// were at the last commit, whatever the contract.
class CCEInkNote : public CQorvApiBase {
 public:
  CCEInkNote();

  /// Deletes the file.
  bool DeleteItemByOid(DataType type, DWORD oid) override;
  bool DeleteAllItems() override;
  bool CountItems() override;
  bool ReadItemRecord(IDispatch* item, DWORD oid) override;
  bool GetChanges() override;
  bool CommitChanges(bool afterFullListing) override;
  bool GetAllItems() override;
  bool WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                       ItemReplyHeader& header) override;

 private:
  struct Record;

  void skipContractName();
  void listChange(DWORD oid, BYTE kind);
  void listChangedAndDeleted();
  /// False when the database can't be opened.
  bool listAdded();
  Record readRecord(const BYTE* record, DWORD& position);

  RichInkLibrary library_;
};

}  // namespace qorv
