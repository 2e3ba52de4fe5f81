#include "mail/mail.h"

#include "channel/host_context.h"

namespace qorv {

CCEMail2::CCEMail2() : CQorvApiBase({kNoDefaultFolder, DataType::Mail, &hostContext().mailLog}) {}

}  // namespace qorv
