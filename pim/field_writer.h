// Writes properties of an object-model item as tagged fields of its record.
#pragma once

#include "channel/reply_writer.h"
#include "pim/date_conversion.h"
#include "platform/errors.h"
#include "platform/outlook.h"
#include "service/owned_text.h"

namespace qorv {

/// A property that can't be read is written as 0, as an empty text or as a time of zeroes, so that a record always has
/// its fields.
template <typename Item>
class FieldWriter {
 public:
  using GetDate = HRESULT (Item::*)(DATE*);
  using GetFlag = HRESULT (Item::*)(VARIANT_BOOL*);
  using GetNumber = HRESULT (Item::*)(LONG*);
  using GetText = HRESULT (Item::*)(BSTR*);

  FieldWriter(IPOutlookApp& application, Item& item, ReplyWriter& reply)
      : application_(application), item_(item), reply_(reply) {}

  [[nodiscard]] bool flag(GetFlag get) const {
    VARIANT_BOOL value = VARIANT_FALSE;
    return SUCCEEDED((item_.*get)(&value)) && value == VARIANT_TRUE;
  }
  [[nodiscard]] LONG number(GetNumber get) const {
    LONG value = 0;
    return SUCCEEDED((item_.*get)(&value)) ? value : 0;
  }

  void writeDate(DWORD tag, GetDate get) {
    DATE value;
    const bool known = SUCCEEDED((item_.*get)(&value));
    reply_.WriteTaggedSystemTime(tag, known ? toSystemTime(application_, value) : SYSTEMTIME{});
  }
  /// 1 for true.
  void writeFlag(DWORD tag, GetFlag get) { reply_.WriteTaggedDword(tag, flag(get) ? 1 : 0); }
  void writeNumber(DWORD tag, GetNumber get) {
    reply_.WriteTaggedDword(tag, static_cast<DWORD>(number(get)));
  }
  /// 1 for private: the object model's own number stays on the device.
  void writeSensitivity(DWORD tag) {
    reply_.WriteTaggedDword(tag, number(&Item::get_Sensitivity) == olPrivate ? 1 : 0);
  }
  void writeText(DWORD tag, GetText get) {
    OwnedText value(application_);
    (item_.*get)(value.put());
    reply_.WriteTaggedString(tag, value.get());
  }

 private:
  IPOutlookApp& application_;
  Item& item_;
  ReplyWriter& reply_;
};

}  // namespace qorv
