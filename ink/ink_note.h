// The handler of ink notes.
#pragma once

#include "service/api_base.h"

namespace qorv {

class CCEInkNote : public CQorvApiBase {
 public:
  CCEInkNote();
};

}  // namespace qorv
