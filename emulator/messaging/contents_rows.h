// A folder's messages as the rows of a table.
#pragma once

#include "emulator/messaging/mail_context.h"
#include "emulator/messaging/row_source.h"

namespace emulator {

/// Read from the store as they are asked for, as they are then.
class ContentsRows final : public RowSource {
 public:
  ContentsRows(MailContext& context, MailFolder folder) : context_(context), folder_(folder) {}

  std::vector<PropertyTag> defaultColumns() const override;
  std::size_t count() override { return context_.mailbox.count(folder_); }
  void read(std::size_t position, std::size_t limit, const Visitor& visit) override;
  HRESULT sort(std::span<const SSortOrder> orders) override;

 private:
  MailContext& context_;
  MailFolder folder_;
  std::string order_ = "number";  ///< as they arrived
};

}  // namespace emulator
