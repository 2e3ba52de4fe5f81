#include "pim/contact.h"

#include "channel/host_context.h"

namespace qorv {

CCEContact::CCEContact() : CQorvApiBase({olFolderContacts, DataType::Contact, &hostContext().contactLog}) {}

}  // namespace qorv
