#include "ink/note_database.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "ink/ink_state.h"
#include "service/property_database.h"

namespace qorv {

namespace {

constexpr std::u16string_view kName = u"\\qvNoteDb";

constexpr CEPROPID kIdentifier = 0x00010013;
constexpr CEPROPID kWritten = 0x00020040;

CEPROPVAL identifierProperty(CEOID oid) {
  CEPROPVAL value{};
  value.propid = kIdentifier;
  value.val.ulVal = oid;
  return value;
}

CEPROPVAL writtenProperty(const FILETIME& written) {
  CEPROPVAL value{};
  value.propid = kWritten;
  value.val.filetime = written;
  return value;
}

/// By its identifier when that is known, else by its name.
UniqueHandle open(CEPROPID sortProperty) {
  CEGUID volume = kSystemVolume;
  return openDatabase(volume, inkState().noteDatabase, std::u16string(kName), sortProperty, 0, nullptr);
}

CEDBASEINFO description() {
  CEDBASEINFO database{};
  database.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC;
  std::ranges::copy(kName, database.szDbaseName);
  database.wNumSortOrder = 2;
  database.rgSortSpecs[0].propid = kIdentifier;
  database.rgSortSpecs[1].propid = kWritten;
  return database;
}

}  // namespace

NoteDatabase::NoteDatabase(NoteOrder order)
    : database_(open(order == NoteOrder::ByIdentifier ? kIdentifier : 0)) {}

bool NoteDatabase::seek(DWORD place) const {
  DWORD index = 0;
  return CeSeekDatabase(database_.get(), CEDB_SEEK_BEGINNING, place, &index) != 0;
}

std::optional<RecordedNote> NoteDatabase::recordedNote(std::span<const CEPROPVAL> record) {
  RecordedNote note;
  bool isNamed = false;
  for (const CEPROPVAL& property : record) {
    if (property.propid == kIdentifier) {
      note.oid = property.val.ulVal;
      isNamed = true;
    }
    if (property.propid == kWritten) note.written = property.val.filetime;
  }
  return isNamed ? std::optional(note) : std::nullopt;
}

bool NoteDatabase::knows(CEOID oid) const {
  CEPROPVAL sought = identifierProperty(oid);
  DWORD index = 0;
  return CeSeekDatabase(database_.get(), CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&sought),
                        &index) != 0;
}

void NoteDatabase::add(const FoundFile& note) {
  std::array values{identifierProperty(note.oid), writtenProperty(note.written)};
  CeWriteRecordProps(database_.get(), 0, values.size(), values.data());
}

bool NoteDatabase::renew() {
  // Opening tells the identifier of a database that an earlier module made.
  open(0);
  CEGUID volume = kSystemVolume;
  CEOID& known = inkState().noteDatabase;
  if (known != 0) CeDeleteDatabaseEx(&volume, known);
  known = createDatabase(volume, description());
  return known != 0;
}

}  // namespace qorv
