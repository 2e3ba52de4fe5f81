// The agent against a device whose property databases a test arranges and looks into.
#pragma once

#include <optional>
#include <variant>

#include "platform/property_database.h"
#include "tests/support/agent_test.h"

namespace test {

/// A number, a text or a blob, as the type in the tag's low word says.
struct Property {
  CEPROPID tag = 0;
  std::variant<DWORD, std::u16string, Bytes> value;

  friend bool operator==(const Property&, const Property&) = default;
};
/// In the record's own order.
using Record = std::vector<Property>;

inline const std::u16string kContracts = u"\\QorvContracts";
inline const std::u16string kAppointmentLog = u"\\QorvAppointmentLog";

inline constexpr CEPROPID kNameTag = 0x1205001F;
inline constexpr CEPROPID kTypeTag = 0x12040003;
inline constexpr CEPROPID kSequenceTag = 0x12020003;
inline constexpr CEPROPID kOidTag = 0x12010003;
inline constexpr CEPROPID kKindTag = 0x12030003;
inline constexpr CEPROPID kEntryIdTag = 0x12060041;

/// A contract as the agent writes it.
inline Record contract(std::u16string name, DWORD type, DWORD sequence) {
  return {{kNameTag, std::move(name)}, {kTypeTag, type}, {kSequenceTag, sequence}};
}

inline Record change(DWORD oid, DWORD sequence, DWORD kind) {
  return {{kOidTag, oid}, {kSequenceTag, sequence}, {kKindTag, kind}};
}

class DatabaseTest : public AgentTest {
 protected:
  /// Makes an empty database in the place of one that has the name.
  CEOID makeDatabase(std::u16string name, const std::vector<SORTORDERSPEC>& orders);
  void removeDatabase(std::u16string name);
  /// Adds records to a database. Their identifiers, in the order given.
  std::vector<CEOID> add(std::u16string name, const std::vector<Record>& records);

  /// The contract database as the agent makes it, with these records.
  void makeContracts(const std::vector<Record>& records);
  /// A change log with its newest change first, as the recorder makes it.
  std::vector<CEOID> makeLog(const std::vector<Record>& records,
                             const std::u16string& name = kAppointmentLog);

  bool exists(std::u16string name);
  /// The records in the order of the property; they must be there.
  std::vector<Record> records(std::u16string name, CEPROPID sortProperty);
  std::vector<Record> contracts() { return records(kContracts, kNameTag); }
  std::vector<Record> log() { return records(kAppointmentLog, kSequenceTag); }

  void setCounter(DWORD value, const std::u16string& name = kAppointmentLog);
  std::optional<DWORD> counter(const std::u16string& name = kAppointmentLog);

  /// The logged calls on databases.
  std::vector<std::string> databaseCalls() const;
  /// How long the agent slept, sleep by sleep.
  std::vector<DWORD> sleeps() const;
};

}  // namespace test
