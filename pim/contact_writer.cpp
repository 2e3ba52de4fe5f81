#include "pim/contact_writer.h"

#include <string>

#include "pim/saved_item.h"
#include "platform/errors.h"

namespace qorv {

namespace tag = contact_tag;

void ContactWriter::keepBody() {
  body_ = fields_.text();
  putShortBody(contact_, body_);
}

void ContactWriter::putText(const ContactTextField& field) {
  RequestText text = fields_.text();
  (contact_.*field.put)(text.get());
  switch (field.tag) {
    case tag::kFileAs:
      fileAsLength_ = text.length();
      break;
    case tag::kCompanyName:
      nameLength_ += text.length();
      break;
    case tag::kFirstName:
      nameLength_ += text.length();
      firstName_ = std::move(text);
      break;
    case tag::kLastName:
      nameLength_ += text.length();
      lastName_ = std::move(text);
      break;
    default:
      break;
  }
}

void ContactWriter::applyField(DWORD fieldTag) {
  if (fieldTag == tag::kBody) {
    keepBody();
  } else if (const auto* field = findField(kContactDates, fieldTag)) {
    if (const auto date = fields_.date()) (contact_.*field->put)(*date);
  } else if (const auto* text = findField(kContactTexts, fieldTag)) {
    putText(*text);
  }
}

void ContactWriter::composeFileAs() {
  // Both names, be they empty, replace what the desktop sent to file the contact under: the device's list goes by
  // last names.
  if (lastName_ && firstName_) {
    std::u16string composed = std::u16string(lastName_.get()) + u", " + firstName_.get();
    contact_.put_FileAs(composed.data());
  }
  // Desktops know a contact without a name by its lone comma. That goes for a change without names too: a desktop
  // sends the names with every change.
  if (nameLength_ == 0 && fileAsLength_ == 0) {
    WCHAR comma[] = u",";
    contact_.put_FileAs(comma);
  }
}

bool ContactWriter::write(ItemReplyHeader& header) {
  if (!fields_.walk([this](DWORD fieldTag) { applyField(fieldTag); })) return false;
  composeFileAs();
  if (FAILED(contact_.Save())) return false;
  finishSaved(application_, contact_, body_, header);
  return true;
}

}  // namespace qorv
