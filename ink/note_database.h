// The note database: which notes there were, and when each was last written, at the last commit.
//
// "\qvNoteDb" in the object store, two ascending orders, by property 1 and by property 2. A record is one
// note:
//
//   property 1  0x00010013  u32       the note file's object identifier
//   property 2  0x00020040  FILETIME  when it was last written
#pragma once

#include <optional>
#include <span>

#include "ink/note_files.h"
#include "service/record_reader.h"
#include "service/unique_handle.h"

namespace qorv {

/// What the database knows of a note.
struct RecordedNote {
  CEOID oid = 0;
  FILETIME written{};
};

enum class NoteOrder { None, ByIdentifier };

class NoteDatabase {
 public:
  /// Opens the database; it is never made here.
  explicit NoteDatabase(NoteOrder order);

  [[nodiscard]] bool isOpen() const { return static_cast<bool>(database_); }

  /// Gives `visit` one record after another. Records that can't be read, or that name no note, are passed
  /// over.
  template <typename Visit>
  void visit(Visit visit) const {
    RecordReader reader(database_.get());
    for (DWORD place = 0; seek(place); ++place) {
      if (const auto note = recordedNote(reader.readAll())) visit(*note);
    }
  }

  /// Whether there is a record of the note. The database was opened by identifier.
  [[nodiscard]] bool knows(CEOID oid) const;
  void add(const FoundFile& note);

  /// Makes an empty database in the place of the one that there may be. False when it can't be made.
  static bool renew();

 private:
  [[nodiscard]] bool seek(DWORD place) const;
  static std::optional<RecordedNote> recordedNote(std::span<const CEPROPVAL> record);

  UniqueHandle database_;
};

}  // namespace qorv
