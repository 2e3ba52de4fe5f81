// Contacts: cards onto an emulated device and back.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/apps/journey.h"

namespace {

using Json = nlohmann::json;

class ContactJourney : public Journey {
 protected:
  Json dumpedContacts() {
    EXPECT_EQ(run("'" QORV_DEVICE "' dump device"), 0) << err_;
    return Json::parse(out_)["contacts"];
  }

  Json dumped(const std::string& property, const std::string& value) {
    for (const Json& contact : dumpedContacts()) {
      if (contact[property] == value) return contact;
    }
    ADD_FAILURE() << "no contact has the " << property << " " << value;
    return {};
  }

  /// The device has an identity, so that UIDs name its items.
  void load(const Json& contacts) {
    std::ofstream(folder_.file("load.json"))
        << Json{{"registry", {{"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", {{"MachineID", "PDA"}}}}},
                {"contacts", contacts}};
    ASSERT_EQ(run("'" QORV_DEVICE "' load device load.json"), 0) << err_;
  }

  std::string card(const std::string& oid) { return read(folder_.file("pulled/contacts/" + oid + ".vcf")); }
};

TEST_F(ContactJourney, aFamilyTravelsWithoutADifference) {
  EXPECT_EQ(sync("push " + sample("contacts/family-3.0.vcf")), 0) << out_ << err_;
  EXPECT_EQ(err_, "");
  EXPECT_EQ(out_.find("note:"), std::string::npos) << out_;
  EXPECT_EQ(sync("list contacts"), 0);
  EXPECT_NE(out_.find("Ann Lee           ann@lee.example  0123 456\n"), std::string::npos) << out_;
  EXPECT_NE(out_.find("3 contacts\n"), std::string::npos) << out_;
}

TEST_F(ContactJourney, everythingThatADeviceHoldsTravelsToAnotherUnchanged) {
  EXPECT_EQ(sync("push " + sample("contacts")), 1);
  ASSERT_EQ(sync("pull first"), 0) << err_;
  EXPECT_EQ(files("first/contacts").size(), 13u);
  for (const std::string version : {"3.0", "4.0"}) {
    create(version);
    ASSERT_EQ(sync("pull --vcard " + version + " there" + version), 0) << err_;
    ASSERT_EQ(sync("push there" + version, version), 0) << out_ << err_;
    EXPECT_EQ(out_.find("note:"), std::string::npos) << out_;
    ASSERT_EQ(sync("pull back" + version, version), 0) << err_;
    EXPECT_EQ(files("first/contacts"), files("back" + version + "/contacts"));
  }
}

TEST_F(ContactJourney, anOfficeProgramsCardFillsTheDevice) {
  ASSERT_EQ(sync("push " + sample("contacts/office-3.0.vcf")), 0) << out_ << err_;
  const Json contact = dumped("LastName", "Okafor");
  const Json expected{
      {"Title", "Dr."},
      {"FirstName", "Harriet"},
      {"MiddleName", "Ann"},
      {"FileAs", "Okafor, Harriet"},
      {"CompanyName", "Brackwater Tools, Ltd."},
      {"Department", "Research"},
      {"JobTitle", "Head of Research"},
      {"Email1Address", "harriet.okafor@brackwater.example"},
      {"Email2Address", "harriet@okafor.example"},
      {"BusinessTelephoneNumber", "+44 1904 555 010"},
      {"Business2TelephoneNumber", "+44 1904 555 011"},
      {"BusinessFaxNumber", "+44 1904 555 019"},
      {"MobileTelephoneNumber", "+44 7700 900123"},
      {"HomeTelephoneNumber", "+44 1904 555 777"},
      {"CarTelephoneNumber", "+44 7700 900124"},
      {"PagerNumber", "5551"},
      {"RadioTelephoneNumber", "Channel 9"},
      {"AssistantTelephoneNumber", "+44 1904 555 012"},
      {"AssistantName", "Ivo Brandt"},
      {"Spouse", "Chidi Okafor"},
      {"Anniversary", "1998-07-18T00:00:00.000"},
      {"Birthday", "1970-05-01T00:00:00.000"},
      {"BusinessAddressStreet", "4 Foss Wharf"},
      {"BusinessAddressPostalCode", "YO1 7AA"},
      {"HomeAddressStreet", "\"The Old Forge\", 12 Mill Lane"},
      {"HomeAddressPostalCode", "YO32 3XX"},
      {"OtherAddressCity", "Whitby"},
      {"WebPage", "http://www.brackwater.example/research?team=tools;view=all"},
      {"Categories", "Business,Climbing"},
      {"Body", "Met at the fair in Leeds; likes carbide, hates slides.\r\n\r\nSend the prints by post."},
  };
  for (const auto& [property, value] : expected.items()) EXPECT_EQ(contact[property], value) << property;
  EXPECT_EQ(dumped("Email1Address", "desk@brackwater.example")["FileAs"], "Brackwater Tools, Ltd.");
}

TEST_F(ContactJourney, aPhonesCardsKeepTheirLetters) {
  ASSERT_EQ(sync("push " + sample("contacts/phone-2.1.vcf")), 0) << out_ << err_;
  EXPECT_NE(out_.find("note: PHOTO is not kept on the device\n"), std::string::npos) << out_;
  const Json german = dumped("FirstName", "J\u00F6rg");
  EXPECT_EQ(german["LastName"], "M\u00FCller");
  EXPECT_EQ(german["HomeAddressStreet"], "Kastanienallee 7\r\nHinterhaus");
  EXPECT_EQ(german["Birthday"], "1968-02-29T00:00:00.000");
  EXPECT_EQ(german["Body"],
            "Ruft lieber an, als zu schreiben.\r\n"
            "Nach 20 Uhr nur Notf\u00E4lle; den Schl\u00FCssel hat Frau Kr\u00FCger.");
  const Json japanese = dumped("LastName", "\u5C71\u7530");
  EXPECT_EQ(japanese["FirstName"], "\u82B1\u5B50");
  EXPECT_EQ(japanese["YomiLastName"], "\u3084\u307E\u3060");
  EXPECT_EQ(japanese["YomiFirstName"], "\u306F\u306A\u3053");
}

TEST_F(ContactJourney, labelledPropertiesAreUnderstood) {
  ASSERT_EQ(sync("push " + sample("contacts/labels-3.0.vcf")), 0) << out_ << err_;
  for (const char* note : {"NICKNAME is not kept on the device: \"Malu\"", "X-AIM is not kept on the device",
                           "a label is not kept on the device: \"Ateli\u00EA\"",
                           "BDAY, which is no full date, is not kept on the device: \"1604-11-03\"",
                           "a phone number is kept as home phone: \"+351 213 456 789\""}) {
    EXPECT_NE(out_.find(std::string("note: ") + note), std::string::npos) << note << "\n" << out_;
  }
  const Json contact = dumped("LastName", "Santos");
  EXPECT_EQ(contact["Spouse"], "Rui Santos");
  EXPECT_EQ(contact["Children"], "In\u00EAs, Tom\u00E1s");
  EXPECT_EQ(contact["Anniversary"], "2001-09-15T00:00:00.000");
  EXPECT_EQ(contact["HomeAddressStreet"], "Rua da Bica 14\r\n2.\u00BA Esq.");
  EXPECT_EQ(contact["YomiFirstName"], "ma-REE-a");
  EXPECT_EQ(contact.contains("Birthday"), false);
  EXPECT_EQ(dumped("CompanyName", "Padaria Central")["FirstName"], "");
}

TEST_F(ContactJourney, aGroupOfTheNewestVersionIsSkippedAndThePersonTaken) {
  EXPECT_EQ(sync("push " + sample("contacts/address-book-4.0.vcf")), 1);
  EXPECT_NE(
      err_.find("address-book-4.0.vcf:28: urn:uuid:8f6d3c1e-0b52-4a57-9d4e-2f1c7a90b003: a list of people "
                "is no contact\n"),
      std::string::npos)
      << err_;
  const Json contact = dumped("FirstName", "Katar\u00EDna");
  EXPECT_EQ(contact["BusinessTelephoneNumber"], "+421-2-5555-0101 ext. 12");
  EXPECT_EQ(contact["MobileTelephoneNumber"], "+421-905-555-010");
  EXPECT_EQ(contact["Anniversary"], "2010-06-19T00:00:00.000");
  EXPECT_EQ(contact["Spouse"], "Peter Nov\u00E1k");
  EXPECT_EQ(contact["Children"], "Ema");
}

TEST_F(ContactJourney, damagedCardsAreNamedAndTheOthersTaken) {
  EXPECT_EQ(sync("push " + sample("contacts/damaged.vcf")), 1);
  EXPECT_NE(out_.find("2 added, 0 changed, 3 skipped\n"), std::string::npos) << out_;
  for (const char* problem : {"damaged.vcf:7: the card isn't closed: END:VCARD is missing\n",
                              "damaged.vcf:11: line 15 is no property: it has no colon\n",
                              "damaged.vcf:17: nobody: the card names nobody\n"}) {
    EXPECT_NE(err_.find(problem), std::string::npos) << err_;
  }
  EXPECT_EQ(dumpedContacts().size(), 2u);
}

TEST_F(ContactJourney, anEditedCardChangesItsOwnContact) {
  load({{{"Oid", 501},
         {"FirstName", "Ann"},
         {"LastName", "Lee"},
         {"CompanyName", "Acme"},
         {"Birthday", "1970-05-01T00:00:00.000"},
         {"Body", "Hi"}}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_NE(card("501").find("UID:contact-501@PDA\r\n"), std::string::npos) << card("501");

  // Without her first name, birthday and note, the contact has none of them, and is filed by what is left.
  folder_.write("501.vcf",
                "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:contact-501@PDA\r\nFN:Lee\r\nN:Lee;;;;\r\nORG:Acme\r\n"
                "TITLE:Boss\r\nEND:VCARD\r\n");
  ASSERT_EQ(sync("push 501.vcf"), 0) << out_ << err_;
  EXPECT_NE(out_.find("changed 501\n"), std::string::npos) << out_;
  Json contacts = dumpedContacts();
  ASSERT_EQ(contacts.size(), 1u);
  EXPECT_EQ(contacts[0]["FirstName"], "");
  EXPECT_EQ(contacts[0]["LastName"], "Lee");
  EXPECT_EQ(contacts[0]["FileAs"], "Lee");
  EXPECT_EQ(contacts[0]["JobTitle"], "Boss");
  EXPECT_EQ(contacts[0]["Body"], "");
  EXPECT_EQ(contacts[0].contains("Birthday"), false);

  // The company alone.
  folder_.write(
      "501.vcf",
      "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:contact-501@PDA\r\nFN:Acme\r\nN:;;;;\r\nORG:Acme\r\nEND:VCARD\r\n");
  ASSERT_EQ(sync("push 501.vcf"), 0) << out_ << err_;
  contacts = dumpedContacts();
  EXPECT_EQ(contacts[0]["LastName"], "");
  EXPECT_EQ(contacts[0]["FileAs"], "Acme");
}

TEST_F(ContactJourney, aSecondPullWritesNothingInEitherVersion) {
  load({{{"Oid", 501}, {"FirstName", "Ann"}}});
  for (const char* version : {"3.0", "4.0"}) {
    ASSERT_EQ(sync(std::string("pull pulled --vcard ") + version), 0) << err_;
    EXPECT_NE(out_.find("1 written, 0 unchanged\n"), std::string::npos) << out_;
    ASSERT_EQ(sync(std::string("pull pulled --vcard ") + version), 0) << err_;
    EXPECT_NE(out_.find("0 written, 1 unchanged\n"), std::string::npos) << out_;
  }
}

TEST_F(ContactJourney, contactsAreShownAndDeleted) {
  load({{{"Oid", 501}, {"FirstName", "Ann"}, {"Home2TelephoneNumber", "5"}},
        {{"Oid", 502}, {"FirstName", "Bo"}}});
  ASSERT_EQ(sync("show contacts 501"), 0) << err_;
  EXPECT_TRUE(out_.starts_with("BEGIN:VCARD\r\nVERSION:3.0\r\n")) << out_;
  ASSERT_EQ(sync("show contacts 501 --vcard 4.0"), 0) << err_;
  EXPECT_TRUE(out_.starts_with("BEGIN:VCARD\r\nVERSION:4.0\r\n")) << out_;
  ASSERT_EQ(sync("--json show contacts 501"), 0) << err_;
  EXPECT_EQ(Json::parse(out_)["contact"]["second_home_phone"], "5");
  EXPECT_EQ(sync("show contacts 501 --vcard 2.1"), 2);
  EXPECT_EQ(sync("delete contacts 501"), 0) << err_;
  ASSERT_EQ(sync("--json list contacts"), 0) << err_;
  EXPECT_EQ(Json::parse(out_)["contacts"].size(), 1u);
}

TEST_F(ContactJourney, whatTheDeviceChangesInANoteIsNamed) {
  // A note of 4096 characters and more is stored in the device's code page, which lacks this letter.
  folder_.write("long.vcf", "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:1\r\nFN:Ann\r\nN:;Ann\r\nNOTE:" +
                                std::string(5000, 'x') + "\u010C\r\nEND:VCARD\r\n");
  EXPECT_EQ(sync("push long.vcf"), 1);
  EXPECT_TRUE(err_.starts_with("qorv-sync: long.vcf: \"Ann\": body: sent (5001 characters)")) << err_;
}

TEST_F(ContactJourney, khardListsWhatPullWrote) {
  if (run("khard --version") != 0) GTEST_SKIP() << "khard is not installed: scripts/setup installs it";
  ASSERT_EQ(sync("push " + sample("contacts")), 1) << out_ << err_;
  const std::string home = "'" + folder_.file("home") + "'";
  std::filesystem::create_directories(folder_.file("home/khard"));
  for (const std::string version : {"3.0", "4.0"}) {
    ASSERT_EQ(sync("pull --vcard " + version + " pulled"), 0) << err_;
    folder_.write("home/khard/khard.conf",
                  "[addressbooks]\n[[device]]\npath = " + folder_.file("pulled/contacts") + "\n");
    const std::string khard =
        "HOME=" + home + " XDG_CONFIG_HOME=" + home + " XDG_CACHE_HOME=" + home + " LC_ALL=C.UTF-8 khard ";
    ASSERT_EQ(run(khard + "list --parsable --fields=formatted_name"), 0) << err_;
    EXPECT_EQ(err_, "");
    for (const char* name : {"Ann Lee\n", "J\u00F6rg M\u00FCller\n", "Dr. Harriet Ann Okafor\n",
                             "Padaria Central\n", "Ing. Katar\u00EDna Nov\u00E1kov\u00E1\n"}) {
      EXPECT_NE(out_.find(name), std::string::npos) << name << " in:\n" << out_;
    }
    EXPECT_EQ(std::count(out_.begin(), out_.end(), '\n'), 13);
    ASSERT_EQ(run(khard + "email --parsable okafor"), 0) << err_;
    EXPECT_NE(out_.find("harriet.okafor@brackwater.example\t"), std::string::npos) << out_;
    ASSERT_EQ(run(khard + "phone --parsable ann"), 0) << err_;
    EXPECT_NE(out_.find("0123 456\t"), std::string::npos) << out_;
    ASSERT_EQ(run(khard + "birthdays --parsable"), 0) << err_;
    EXPECT_NE(out_.find("1970"), std::string::npos) << out_;
  }
}

}  // namespace
