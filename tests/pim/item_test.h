// Items of one data type as the agent answers for them and as the device keeps them.
#pragma once

#include <algorithm>
#include <sstream>

#include "emulator/snapshot/snapshot.h"
#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"

namespace test {

using Json = nlohmann::json;

inline Bytes recordOf(std::initializer_list<Bytes> fields) {
  Bytes bytes = record(static_cast<unsigned>(fields.size()));
  for (const Bytes& field : fields) bytes.append(field);
  return bytes;
}

/// The device is looked at and arranged through snapshots, whose property names are the object model's own: the tests
/// don't share the agent's way to a property.
class ItemTest : public AgentTest {
 protected:
  /// The section is the snapshot's name for the items of the type.
  ItemTest(unsigned type, std::string section) : type_(type), section_(std::move(section)) {}

  /// A request with the test's type.
  [[nodiscard]] Bytes command(unsigned code) const { return request(code, type_); }
  /// The first ten bytes of the answer to an addition with reference 7.
  Bytes addReply(const Bytes& record) { return reply(command(2).u32(7).append(record)).slice(0, 10); }
  DWORD add(const Bytes& record) { return addReply(record).dwordAt(2); }
  Bytes changeReply(DWORD oid, const Bytes& record) {
    return reply(command(3).u32(oid).append(record)).slice(0, 10);
  }
  Bytes read(DWORD oid) { return reply(command(7).u32(oid)); }

  /// Makes or changes an item as the device's user would.
  void load(const Json& item) { emulator::loadSnapshot(device(), Json{{section_, {item}}}.dump()); }
  /// All items that the device has of the type.
  Json storedItems() {
    std::ostringstream out;
    emulator::dumpSnapshot(device(), out);
    return Json::parse(out.str())[section_];
  }
  /// An item's properties; dates that are not set are missing. Null for an item that isn't there.
  Json stored(DWORD oid) {
    for (Json& item : storedItems()) {
      if (item["Oid"] == oid) return item;
    }
    return nullptr;
  }

  /// The names of the logged calls that begin with one of the prefixes, in order.
  [[nodiscard]] std::vector<std::string> callsOf(const std::vector<std::string>& prefixes) const {
    std::vector<std::string> names = callNames();
    std::erase_if(names, [&](const std::string& name) {
      return std::ranges::none_of(prefixes, [&](const std::string& each) { return name.starts_with(each); });
    });
    return names;
  }
  /// The arguments of every logged call of that name, one list a call.
  [[nodiscard]] Json argumentsOf(const std::string& name) const {
    Json arguments = Json::array();
    for (const Json& call : calls(name)) arguments.push_back(call["args"]);
    return arguments;
  }

 private:
  unsigned type_;
  std::string section_;
};

class ContactTest : public ItemTest {
 protected:
  ContactTest() : ItemTest(kContact, "contacts") {}
};

class TaskTest : public ItemTest {
 protected:
  TaskTest() : ItemTest(kTask, "tasks") {}
};

}  // namespace test
