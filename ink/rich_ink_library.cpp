#include "ink/rich_ink_library.h"

#include "platform/rich_ink.h"
#include "service/platform_level.h"

namespace qorv {

RichInkLibrary::RichInkLibrary() {
  if (!platformHasInk()) return;
  library_ = LoadLibraryW(u"RichInk.dll");
  if (!library_) return;
  if (const FARPROC entry = GetProcAddressW(library_, u"InitRichInkDLL")) {
    reinterpret_cast<InitRichInkDLL_t>(entry)();
  }
}

RichInkLibrary::~RichInkLibrary() {
  if (library_) FreeLibrary(library_);
}

}  // namespace qorv
