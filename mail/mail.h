// The handler of mail messages.
#pragma once

#include "service/api_base.h"

namespace qorv {

class CCEMail2 : public CQorvApiBase {
 public:
  CCEMail2();
};

}  // namespace qorv
