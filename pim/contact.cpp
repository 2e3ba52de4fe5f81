#include "pim/contact.h"

#include "channel/host_context.h"
#include "pim/contact_fields.h"
#include "pim/contact_writer.h"
#include "pim/field_writer.h"
#include "pim/saved_item.h"

namespace qorv {

CCEContact::CCEContact() : CQorvApiBase({olFolderContacts, DataType::Contact, &hostContext().contactLog}) {}

bool CCEContact::ReadItemRecord(IDispatch* item, DWORD) {
  auto& contact = static_cast<IContact&>(*item);
  const DWORD start = beginRecord();
  FieldWriter<IContact> fields(application(), contact, *this);
  for (const ContactDateField& field : kContactDates) fields.writeDate(field.tag, field.get);
  for (const ContactTextField& field : kContactTexts) {
    if (field.tag != contact_tag::kFileAs) fields.writeText(field.tag, field.get);
  }
  endRecord(start, oidOf(contact));
  return true;
}

bool CCEContact::WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                                 ItemReplyHeader& header) {
  ContactWriter writer(application(), *this, record, static_cast<IContact&>(*item));
  const bool saved = writer.write(header);
  consumed = writer.consumed();
  return saved;
}

}  // namespace qorv
