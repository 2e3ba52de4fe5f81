#include "ink/ink_state.h"

namespace qorv {

InkState& inkState() {
  static InkState state;
  return state;
}

}  // namespace qorv
