// Turns a stored message into the fields of its record.
#pragma once

#include "channel/reply_writer.h"
#include "mail/mailbox.h"

namespace qorv {

class MessageReader {
 public:
  MessageReader(IMsgStore& store, const FolderIds& folders, IMessage& message, ReplyWriter& reply)
      : store_(store), folders_(folders), message_(message), reply_(reply) {}

  /// Appends all fields in their fixed order. What can't be had is left out.
  void read();

 private:
  struct Property;
  static const Property kProperties[];

  [[nodiscard]] DWORD findFolderCode() const;
  /// The tag that the store has given the property of a message's place; 0 when it gives none.
  [[nodiscard]] ULONG findPlaceTag() const;
  void writeProperties();
  void writeBody();

  void writeText(DWORD fieldTag, const SPropValue& value);
  void writeTime(DWORD fieldTag, const SPropValue& value);
  void writeFlags(DWORD fieldTag, const SPropValue& value);

  IMsgStore& store_;
  const FolderIds& folders_;
  IMessage& message_;
  ReplyWriter& reply_;
  DWORD folderCode_ = 0;
};

}  // namespace qorv
