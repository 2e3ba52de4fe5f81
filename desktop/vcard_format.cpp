// Cards as a format of files that items are kept in.
#include "desktop/file_format.h"
#include "desktop/vcard.h"

namespace desktop {

const FileFormat kVcardFormat{
    .name = "vcard", .extension = ".vcf", .beginning = "BEGIN:VCARD", .read = readVcards};

}  // namespace desktop
