#include "channel/module_state.h"

namespace qorv {

ModuleState& moduleState() {
  static ModuleState state;
  return state;
}

}  // namespace qorv
