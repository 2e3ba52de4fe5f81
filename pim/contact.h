// The handler of contacts.
#pragma once

#include "service/api_base.h"

namespace qorv {

class CCEContact : public CQorvApiBase {
 public:
  CCEContact();
};

}  // namespace qorv
