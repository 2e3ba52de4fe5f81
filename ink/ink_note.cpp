#include "ink/ink_note.h"

namespace qorv {

CCEInkNote::CCEInkNote() : CQorvApiBase({kNoDefaultFolder, DataType::InkNote, nullptr}) {}

}  // namespace qorv
