// What an object identifier names, in the words of the platform's object information.
#pragma once

#include "emulator/database/database_store.h"
#include "emulator/system/file_tree.h"
#include "emulator/system/last_error.h"

namespace emulator {

class ObjectInformation {
 public:
  ObjectInformation(ObjectStore& store, FileTree& files, DatabaseStore& databases, LastError& lastError)
      : store_(store), files_(files), databases_(databases), lastError_(lastError) {}

  /// Fills everything but the version. ERROR_INVALID_PARAMETER for an identifier that names nothing, whose type
  /// is OBJTYPE_INVALID. The object model's items and messages are records whose database no program can open:
  /// their parent is 0.
  bool describe(const CEGUID* volume, Oid oid, CEOIDINFOEX* information);

 private:
  void describeFile(Oid oid, CEFILEINFO& file);
  void describeFolder(Oid oid, CEDIRINFO& folder);
  void describeDatabase(Oid oid, CEDBASEINFOEX& database);

  ObjectStore& store_;
  FileTree& files_;
  DatabaseStore& databases_;
  LastError& lastError_;
};

}  // namespace emulator
