// Cards as a format of files that items are kept in.
#include "desktop/file_format.h"
#include "desktop/vcard.h"

namespace desktop {

const FileFormat kVcardFormat{"vcard", ".vcf", "BEGIN:VCARD", nullptr, readVcards};

}  // namespace desktop
