// A device whose items change, and its change logs.
#pragma once

#include <vector>

#include "emulator/database/record_walk.h"
#include "tests/emulator/device_test.h"

namespace emulator::test {

inline constexpr std::u16string_view kContactLog = u"\\QorvContactLog";
inline constexpr std::u16string_view kRoot = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern";

/// What one record of a log says.
struct Logged {
  DWORD item;
  DWORD sequence;
  DWORD change;

  friend bool operator==(const Logged&, const Logged&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Logged& logged) {
    return out << '(' << logged.item << ", " << logged.sequence << ", " << logged.change << ')';
  }
};

class RecorderTest : public DeviceTest {
 protected:
  PimItems& items() { return device().objectModel.items(); }

  Oid add(ObjectKind kind) {
    PimItem item = items().make(kind);
    EXPECT_EQ(items().add(item), S_OK);
    return item.oid;
  }
  void change(ObjectKind kind, Oid oid) {
    PimItem item = items().load(kind, oid).value();
    EXPECT_EQ(items().change(item), S_OK);
  }

  /// The log's records, newest first. A property that a record lacks, or that is not where it belongs, is 0.
  std::vector<Logged> log(std::u16string_view name = kContactLog) {
    DatabaseStore& databases = device().databaseStore;
    const auto database = databases.use(databases.catalog().find(name));
    if (!database) return {};
    std::vector<Logged> found;
    RecordWalk walk(databases.connection(), database->oid, &database->orders.at(0));
    for (auto place = walk.fromBeginning(0); place; place = walk.after(*place, 0)) {
      const RecordProperties properties = databases.records().load(place->record).value().properties;
      const auto at = [&](std::size_t index, CEPROPID id) {
        const bool isThere = index < properties.size() && properties[index].id == id;
        return isThere ? numberOf(properties, id).value_or(0) : 0;
      };
      found.push_back({at(0, 0x12010003), at(1, 0x12020003), at(2, 0x12030003)});
    }
    return found;
  }
  DWORD counter(std::u16string_view name = kContactLog, std::u16string_view key = kRoot) {
    const auto value = device().registry.get(key, name);
    return value ? numberOf(*value).value_or(0) : 0;
  }

  static constexpr ObjectKind kContact = ObjectKind::Contact;
};

}  // namespace emulator::test
