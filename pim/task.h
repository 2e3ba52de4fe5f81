// The handler of tasks.
#pragma once

#include "service/api_base.h"

namespace qorv {

class CCETask : public CQorvApiBase {
 public:
  CCETask();
};

}  // namespace qorv
