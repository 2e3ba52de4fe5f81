#include "emulator/messaging/contents_rows.h"

#include "emulator/messaging/message_properties.h"

namespace emulator {

std::vector<PropertyTag> ContentsRows::defaultColumns() const {
  return messageTags(context_);
}

void ContentsRows::read(std::size_t position, std::size_t limit, const Visitor& visit) {
  context_.mailbox.forEach(folder_, order_, position, limit, [&](const MailMessage& message) {
    visit([&](PropertyTag asked) { return messageValue(context_, message, asked); });
  });
}

HRESULT ContentsRows::sort(std::span<const SSortOrder> orders) {
  std::string order;
  for (const SSortOrder& by : orders) {
    const std::string_view column = sortColumn(by.ulPropTag);
    if (column.empty() || by.ulOrder > TABLE_SORT_DESCEND) return MAPI_E_NO_SUPPORT;
    order.append(column).append(by.ulOrder == TABLE_SORT_DESCEND ? " DESC, " : ", ");
  }
  order_ = order + "number";
  return S_OK;
}

}  // namespace emulator
