// The base of the five handlers: every command, done generically over the object model and a few hooks.
#pragma once

#include <span>

#include "channel/reply_writer.h"
#include "channel/request_reader.h"
#include "platform/outlook.h"

namespace qorv {

struct Change;
struct ObtainedItem;

/// What the dispatcher hands a handler. A handler borrows it all and lives for one request.
struct HandlerContext {
  std::span<const BYTE> request;  ///< from the data type byte on
  ResponseBuffer& responseBuffer;
  IPOutlookApp& application;
};

/// What makes one data type's handler different before it overrides anything.
struct HandlerTraits {
  int defaultFolder;  ///< the object model's number; one that names no folder for mail and ink notes
  DataType dataType;
  const std::u16string* changeLog;  ///< null for ink notes, which have none
};

/// The object model has no folder for mail and ink notes: asked for this one, which holds no items of theirs,
/// it refuses.
inline constexpr int kNoDefaultFolder = olFolderInfrared;

/// The virtual operations stand in the order of the operation table. Commands build the whole reply; their
/// own result is for the caller's information and never travels.
class CQorvApiBase : public RequestReader, public ReplyWriter {
 public:
  explicit CQorvApiBase(const HandlerTraits& traits) : traits_(traits) {}
  CQorvApiBase(const CQorvApiBase&) = delete;
  CQorvApiBase& operator=(const CQorvApiBase&) = delete;
  virtual ~CQorvApiBase() = default;

  virtual bool AddItem();
  virtual bool ChangeItem();
  virtual bool WriteItems();
  /// Hook of DeleteItems: true when the item is gone.
  virtual bool DeleteItemByOid(DataType type, DWORD oid);
  virtual bool DeleteItem();
  virtual bool DeleteAllItems();
  virtual bool CountItems();
  /// Hook of ReadItem and ReadItems: appends one record, a RecordHeader and its fields, and is true when it
  /// did. The item is borrowed and has the interface of the handler's type; null for mail and ink notes.
  /// Here: writes nothing.
  virtual bool ReadItemRecord(IDispatch* item, DWORD oid);
  virtual bool ReadItem();
  virtual bool ReadItems();
  virtual bool DeleteItems();
  virtual bool CreateContract();
  virtual bool DeleteContract();
  virtual bool FindContract();
  virtual bool GetChanges();
  virtual bool CommitChanges(bool afterFullListing);
  virtual bool GetAllItems();
  virtual bool GetDeviceIdentity();
  virtual bool GetPlatformLevel();
  virtual bool AppendFile();
  virtual bool ReadFileChunk();
  /// Hook of AddItem, ChangeItem and WriteItems: fills and saves the item from the record at `record`, stores
  /// in `consumed` how many bytes the record took and in the header the saved item's OID. The item is
  /// borrowed: the command that obtained it releases it. Null for mail and ink notes. Here: the type has no
  /// writer, status 1.
  virtual bool WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed, ItemReplyHeader& header);
  /// Hook of GetChanges (with the change's sequence number) and GetAllItems (with 0): false drops the item.
  virtual bool AcceptItem(DWORD oid, DWORD sequence);

  void setContext(const HandlerContext& context);

 protected:
  [[nodiscard]] DataType dataType() const { return traits_.dataType; }
  [[nodiscard]] IPOutlookApp& application() const { return *application_; }
  [[nodiscard]] const BYTE* requestCursor() const { return requestCursor_; }

  /// Reads the type byte that every request's arguments begin with.
  void skipTypeByte(DWORD& position) { ReadByte(requestCursor_, position); }
  /// Desktops have always sent a word behind a file's path that the agent has no use for.
  void skipUnusedWord(DWORD& position) { ReadDword(requestCursor_, position); }

 private:
  enum class ItemOperation { Add, Change };
  struct BatchEntry;

  [[nodiscard]] ObtainedItem obtain(ItemOperation operation, DWORD number) const;
  bool writeSingleItem(ItemOperation operation);
  [[nodiscard]] BatchEntry readBatchEntry();
  /// False when the batch ends with this entry.
  bool writeBatchEntry(const BatchEntry& entry, ItemReplyHeader& header);
  /// False when the item isn't there.
  bool readListedItem(DWORD oid);
  RequestText readContractName();
  /// The status pair of a contract operation; its argument again.
  bool answerContract(bool succeeded);
  void listChangesOf(const RequestText& name);
  bool listChange(const Change& change);
  void listFolder(IPOutlookItemCollection& items, int count);
  void listItem(IPOutlookItemCollection& items, int index);

  HandlerTraits traits_;
  const BYTE* requestCursor_ = nullptr;
  IPOutlookApp* application_ = nullptr;
};

}  // namespace qorv
