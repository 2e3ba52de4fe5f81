#include "emulator/database/object_information.h"

#include <algorithm>

#include "emulator/database/database_description.h"
#include "platform/errors.h"

namespace emulator {
namespace {

constexpr WORD kInformationVersion = 1;

/// The field begins as zeros; a path that is too long for it is cut.
void copyPath(const std::u16string& path, WCHAR (&field)[MAX_PATH]) {
  std::ranges::copy_n(path.begin(),
                      static_cast<std::ptrdiff_t>(std::min<std::size_t>(path.size(), MAX_PATH - 1)), field);
}

}  // namespace

bool ObjectInformation::describe(const CEGUID* volume, Oid oid, CEOIDINFOEX* out) {
  if (!isObjectStore(volume) || out == nullptr || out->wVersion != kInformationVersion) {
    return lastError_.fail(ERROR_INVALID_PARAMETER);
  }
  CEOIDINFOEX& information = *out;
  information = {};
  information.wVersion = kInformationVersion;
  const auto kind = store_.kindOf(oid);
  if (!kind) return lastError_.fail(ERROR_INVALID_PARAMETER);
  information.wObjType = static_cast<WORD>(std::min(*kind, ObjectKind::Record));
  switch (*kind) {
    case ObjectKind::File:
      describeFile(oid, information.infFile);
      break;
    case ObjectKind::Directory:
      describeFolder(oid, information.infDirectory);
      break;
    case ObjectKind::Database:
      describeDatabase(oid, information.infDatabase);
      break;
    default:
      if (const auto record = databases_.records().load(oid))
        information.infRecord.oidParent = record->database;
  }
  return true;
}

void ObjectInformation::describeFile(Oid oid, CEFILEINFO& file) {
  const auto node = files_.node(oid);
  if (!node) return;
  file.dwAttributes = node->attributes;
  file.oidParent = node->parent;
  copyPath(files_.pathOf(oid), file.szFileName);
  file.ftLastChanged = fileTimeOf(node->written);
  file.dwLength = static_cast<DWORD>(node->size);
}

void ObjectInformation::describeFolder(Oid oid, CEDIRINFO& folder) {
  const auto node = files_.node(oid);
  if (!node) return;
  folder.dwAttributes = node->attributes;
  folder.oidParent = node->parent;
  copyPath(files_.pathOf(oid), folder.szDirName);
}

void ObjectInformation::describeDatabase(Oid oid, CEDBASEINFOEX& database) {
  if (const auto found = databases_.use(oid))
    database = emulator::describe(*found, databases_.catalog().state(oid));
}

}  // namespace emulator
