// A device with a full message and a bare one.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/emulator/messaging_test.h"

namespace emulator::test {

inline constexpr const char* kMail = R"({"mail": {"Inbox": [
  {"Id": 20, "Sender": "ann@example.org", "To": ["bo@example.org", "cy@example.org"], "Cc": ["di@example.org"],
   "Subject": "Hi", "Delivered": "2005-03-14T13:35:10.000Z", "Read": true, "Body": "Text",
   "Where": "Room 1", "Start": "2005-03-15T09:00:00.000Z", "End": "2005-03-15T10:00:00.000Z",
   "Attachments": [{"Name": "a.txt", "Data": "aGk="}, {"Name": "b.bin", "Data": ""}]},
  {"Id": 21}]}})";

/// UTF-16 as it lies in the store.
inline std::string bytesOf(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

inline SPropValue textValue(PropertyTag tag, std::u16string& text) {
  SPropValue value{tag, 0, {}};
  value.Value.lpszW = text.data();
  return value;
}
inline SPropValue numberValue(PropertyTag tag, LONG number) {
  SPropValue value{tag, 0, {}};
  value.Value.l = number;
  return value;
}
inline SPropValue timeValue(PropertyTag tag, const FILETIME& time) {
  SPropValue value{tag, 0, {}};
  value.Value.ft = time;
  return value;
}

class MessagingMessageTest : public MessagingTest {
 protected:
  MessagingMessageTest() : MessagingTest(kMail) {}

  std::u16string text(IMAPIProp& object, PropertyTag tag) {
    Values values;
    object.GetProps(Tags{tag}, MAPI_UNICODE, values.count(), values.out());
    const bool isText = values.size() == 1 && values[0].ulPropTag == tag;
    return isText ? std::u16string(values[0].Value.lpszW) : u"(none)";
  }
  LONG number(IMAPIProp& object, PropertyTag tag) {
    Values values;
    EXPECT_EQ(object.GetProps(Tags{tag}, 0, values.count(), values.out()), S_OK);
    return values[0].Value.l;
  }
  /// The tag by which the device knows a name; 0 when it does not.
  PropertyTag namedTag(std::u16string name, ULONG flags, PropertyTag type = PT_UNICODE) {
    GUID set = PS_MAPI;
    MAPINAMEID id{&set, MNID_STRING, {}};
    id.Kind.lpwstrName = name.data();
    MAPINAMEID* ids[] = {&id};
    SPropTagArray* tags = poison<SPropTagArray>();
    const HRESULT result = store()->GetIDsFromNames(1, ids, flags, &tags);
    EXPECT_GE(result, 0);
    EXPECT_EQ(tags->cValues, 1u);
    const PropertyTag tag = result == S_OK ? tags->aulPropTag[0] | type : 0;
    EXPECT_EQ(entries::MAPIFreeBuffer(tags), 0u);
    return tag;
  }
  std::vector<std::pair<LONG, std::u16string>> recipients(IMessage& message) {
    ComReference<IMAPITable> table;
    EXPECT_EQ(message.GetRecipientTable(MAPI_UNICODE, table.out()), S_OK);
    EXPECT_EQ(table->SetColumns(Tags{PR_RECIPIENT_TYPE, PR_EMAIL_ADDRESS_W}, 0), S_OK);
    const Rows all = rows(*table.get(), 255);
    std::vector<std::pair<LONG, std::u16string>> found;
    for (std::size_t i = 0; i < all.size(); ++i) {
      found.emplace_back(all.at(i, 0).Value.l, all.at(i, 1).Value.lpszW);
    }
    return found;
  }

  ComReference<IMessage> full_ = message(PR_CE_IPM_INBOX_ENTRYID, 0, MAPI_MODIFY);
  ComReference<IMessage> bare_ = message(PR_CE_IPM_INBOX_ENTRYID, 1, MAPI_MODIFY);
};

}  // namespace emulator::test
