// Reads contact_fields.txt and carries every field both ways.
#include <fstream>

#include "tests/pim/item_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;

struct Field {
  unsigned tag = 0;
  std::string encoding;
  std::string property;

  [[nodiscard]] bool isDate() const { return encoding == "date"; }
  /// 2005-03-11 for tag 1, the 12th for tag 2.
  [[nodiscard]] int day() const { return 10 + static_cast<int>(tag); }
  /// A text of the field's own, so that two fields that were mixed up show.
  [[nodiscard]] std::string value() const {
    return isDate() ? "2005-03-" + std::to_string(day()) + "T09:30:00.000" : "value of " + property;
  }
  [[nodiscard]] std::u16string text() const {
    const std::string value = this->value();
    return {value.begin(), value.end()};
  }
};

std::vector<Field> readFields() {
  std::ifstream file(QORV_TEST_DATA "/contact_fields.txt");
  std::vector<Field> fields;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    Field field;
    std::istringstream(line) >> field.tag >> field.encoding >> field.property;
    fields.push_back(field);
  }
  return fields;
}

class ContactFields : public ContactTest {
 protected:
  /// What the desktop sends of a field.
  static Bytes requestField(const Field& field) {
    return field.isDate() ? timeField(field.tag, 9, 30, field.day()) : textField(field.tag, field.text());
  }
  /// What the device sends: 2005-03-11 was a Friday, day 5 of the week, and the 12th a Saturday.
  static Bytes replyField(const Field& field) {
    const Bytes tag = Bytes().u32(field.tag);
    return field.isDate() ? Bytes(tag).time(2005, 3, field.day() - 6, field.day(), 9, 30)
                          : Bytes(tag).terminatedText(field.text());
  }

  const std::vector<Field> fields_ = readFields();
};

TEST_F(ContactFields, areFifty) {
  ASSERT_EQ(fields_.size(), 50u);
  for (unsigned i = 0; i < fields_.size(); ++i) EXPECT_EQ(fields_[i].tag, i + 1);
}

TEST_F(ContactFields, reachTheirProperties) {
  observeCalls();
  Bytes all = record(50);
  for (const Field& field : fields_) all.append(requestField(field));
  const DWORD oid = add(all);
  const Json contact = stored(oid);
  std::vector<std::string> puts;
  for (const Field& field : fields_) {
    puts.push_back("IContact.put_" + field.property);
    if (field.property == "FileAs") continue;
    EXPECT_EQ(contact[field.property], field.value()) << field.tag;
  }
  EXPECT_EQ(contact["FileAs"], "value of LastName, value of FirstName");
  puts.push_back("IContact.put_FileAs");
  EXPECT_EQ(callNames("IContact.put_"), puts) << "in the record's order, then the composed name";
}

TEST_F(ContactFields, reachTheirPropertiesOneByOne) {
  for (const Field& field : fields_) {
    const Json contact = stored(add(record(1).append(requestField(field))));
    EXPECT_EQ(contact[field.property], field.value()) << field.tag;
    for (const Field& other : fields_) {
      if (other.tag == field.tag || other.property == "FileAs") continue;
      EXPECT_EQ(contact.value(other.property, ""), "") << other.tag << " beside " << field.tag;
    }
  }
}

TEST_F(ContactFields, comeInTheirOrderWithoutTheFiledName) {
  Json contact{{"Oid", 17}};
  // 49 fields: header 01 00, OID 17, count 0x31.
  Bytes expected = hex("01 00 11000000 31");
  std::vector<std::string> gets;
  for (const Field& field : fields_) {
    contact[field.property] = field.value();
    if (field.property == "FileAs") continue;
    expected.append(replyField(field));
    gets.push_back("IContact.get_" + field.property);
  }
  gets.push_back("IContact.get_Oid");
  load(contact);
  observeCalls();
  EXPECT_EQ(read(17), expected);
  EXPECT_EQ(callNames("IContact.get_"), gets);
}

TEST_F(ContactFields, ofTheDeviceAreFreedOneByOne) {
  load({{"Oid", 17}});
  observeCalls();
  read(17);
  const auto calls = callsOf({"IContact.get_", "IPOutlookApp.SysFreeString"});
  // Two dates, then 47 times a text and its release, then the identifier.
  ASSERT_EQ(calls.size(), 2u + 2 * 47 + 1);
  for (std::size_t i = 2; i + 1 < calls.size(); i += 2) {
    EXPECT_TRUE(calls[i].starts_with("IContact.get_")) << i;
    EXPECT_EQ(calls[i + 1], "IPOutlookApp.SysFreeString") << i;
  }
}

TEST_F(ContactFields, travelBothWaysUnchanged) {
  Bytes all = record(49);
  for (const Field& field : fields_) {
    if (field.property != "FileAs") all.append(requestField(field));
  }
  const DWORD oid = add(all);
  Bytes expected = Bytes().u8(1).u8(0).u32(oid).u8(49);
  for (const Field& field : fields_) {
    if (field.property != "FileAs") expected.append(replyField(field));
  }
  EXPECT_EQ(read(oid), expected);
}

class FailingContactField : public ContactFields {};

TEST_F(FailingContactField, thatCannotBeReadIsSentEmpty) {
  Json contact{{"Oid", 17}};
  for (const Field& field : fields_) contact[field.property] = field.value();
  load(contact);
  for (const Field& failing : fields_) {
    if (failing.property == "FileAs") continue;
    Bytes expected = hex("01 00 11000000 31");
    for (const Field& field : fields_) {
      if (field.property == "FileAs") continue;
      if (field.tag != failing.tag) {
        expected.append(replyField(field));
      } else if (field.isDate()) {
        expected.u32(field.tag).zeros(16);
      } else {
        expected.u32(field.tag).terminatedText(u"");
      }
    }
    clearFaults();
    fault("IContact.get_" + failing.property + "=0x80004005");
    EXPECT_EQ(read(17), expected) << failing.tag;
  }
}

TEST_F(FailingContactField, thatTheDeviceRefusesIsLeftAsItWas) {
  Json old{{"Oid", 17}, {"FileAs", "old FileAs"}};
  Bytes all = record(50);
  for (const Field& field : fields_) {
    old[field.property] = field.isDate() ? "1999-01-01T00:00:00.000" : "old " + field.property;
    all.append(requestField(field));
  }
  for (const Field& failing : fields_) {
    load(old);
    clearFaults();
    fault("IContact.put_" + failing.property + "=0x80040066");
    EXPECT_EQ(changeReply(17, all), hex("01 00 11000000 11000000")) << failing.tag;
    const Json contact = stored(17);
    for (const Field& field : fields_) {
      if (field.property == "FileAs") continue;
      const Json expected = field.tag == failing.tag ? old[field.property] : Json(field.value());
      EXPECT_EQ(contact[field.property], expected) << field.tag << " when " << failing.tag << " is refused";
    }
  }
}

}  // namespace
}  // namespace qorv
