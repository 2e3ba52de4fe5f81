// The agent against a device whose note files a test arranges and looks into.
#pragma once

#include <optional>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"

namespace test {

inline const std::u16string kNotes = u"\\My Documents\\";

/// A record with a name and a content, as a desktop sends it.
inline Bytes noteRecord(std::u16string_view name, std::u16string_view content) {
  return record(2).append(textField(1, name)).append(textField(2, content));
}

/// A record as the device sends it: seven bytes of header with two fields, then the texts.
inline Bytes readNote(DWORD oid, std::u16string_view name, std::u16string_view content) {
  return Bytes().u8(1).u8(0).u32(oid).u8(2).u32(1).terminatedText(name).u32(2).terminatedText(content);
}

class NoteTest : public AgentTest {
 protected:
  /// Puts a file into the folder of notes, in place of what is there.
  DWORD place(const std::u16string& name, const std::vector<BYTE>& contents, DWORD attributes = 0);
  DWORD placeNote(const std::u16string& name, std::u16string_view text, DWORD attributes = 0);
  DWORD placeFolder(const std::u16string& name);
  /// What a file was last written at: this many seconds after the device's now, or before.
  void setWritten(DWORD oid, int seconds);

  /// 0 when there is no such file in the folder of notes.
  DWORD oidOf(const std::u16string& name);
  /// The text of a note file; nothing when it is not there, or no note.
  std::optional<std::u16string> noteText(const std::u16string& name);
  /// The names of everything in the folder, the oldest first.
  std::vector<std::u16string> names();

  Bytes add(const Bytes& noteRecord) { return reply(request(2, kInkNote).u32(7).append(noteRecord)); }
  Bytes change(DWORD oid, const Bytes& noteRecord) {
    return reply(request(3, kInkNote).u32(oid).append(noteRecord));
  }
  Bytes read(DWORD oid) { return reply(request(7, kInkNote).u32(oid)); }

  /// The reply to a written note: twenty bytes, of which the last ten are zero.
  static Bytes written(DWORD oid, DWORD reference) {
    return Bytes().u8(1).u8(0).u32(oid).u32(reference).zeros(10);
  }
};

}  // namespace test
