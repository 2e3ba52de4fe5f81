// Applies a contact record to a contact and saves it.
#pragma once

#include "channel/wire.h"
#include "pim/contact_fields.h"
#include "pim/field_reader.h"

namespace qorv {

class ContactWriter {
 public:
  ContactWriter(IPOutlookApp& application, RequestReader& request, const BYTE* record, IContact& contact)
      : application_(application), fields_(application, request, record), contact_(contact) {}

  /// True when the contact was saved; the header then has its OID. One attempt; a record that was cut short is not
  /// saved.
  bool write(ItemReplyHeader& header);

  /// The bytes of the record that were read.
  [[nodiscard]] DWORD consumed() const { return fields_.consumed(); }

 private:
  void applyField(DWORD tag);
  void putText(const ContactTextField& field);
  void keepBody();
  void composeFileAs();

  IPOutlookApp& application_;
  FieldReader fields_;
  IContact& contact_;

  RequestText firstName_;
  RequestText lastName_;
  RequestText body_;
  std::size_t nameLength_ = 0;  ///< of company, first and last name together
  std::size_t fileAsLength_ = 0;
};

}  // namespace qorv
