// Phone numbers, e-mail and postal addresses of cards: the device has so many places for each.
#include "desktop/contact_fields.h"
#include "tests/desktop/vcard_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "home phone: 1", for each text that isn't a name.
std::vector<std::string> heldBy(const Contact& contact) {
  std::vector<std::string> held;
  for (const ContactField& field : kContactFields) {
    const auto* text = std::get_if<ContactField::Text>(&field.member);
    if (text == nullptr || field.name.ends_with(" name") || (contact.*(*text)).empty()) continue;
    held.push_back(std::string(field.name) + ": " + toUtf8(contact.*(*text)));
  }
  return held;
}

struct Row {
  const char* lines;
  std::vector<std::string> held;
  std::vector<std::string> notes;
};

void expectRows(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const auto [contact, notes] = readOne(cardOf(row.lines));
    EXPECT_EQ(heldBy(contact), row.held) << row.lines;
    EXPECT_EQ(notes, row.notes) << row.lines;
  }
}

TEST(VcardPhones, goToThePlaceOfTheirKind) {
  expectRows({
      {"TEL;TYPE=CELL:1\r\n", {"mobile phone: 1"}, {}},
      {"TEL;TYPE=cell,voice,text:1\r\n", {"mobile phone: 1"}, {}},
      {"TEL;TYPE=\"cell,voice\":1\r\n", {"mobile phone: 1"}, {}},
      {"TEL;CELL:1\r\n", {"mobile phone: 1"}, {}},
      {"TEL;WORK;VOICE:1\r\n", {"business phone: 1"}, {}},
      {"TEL;TYPE=WORK:1\r\nTEL;TYPE=WORK:2\r\n", {"business phone: 1", "second business phone: 2"}, {}},
      {"TEL;TYPE=HOME:1\r\nTEL;TYPE=HOME:2\r\n", {"home phone: 1", "second home phone: 2"}, {}},
      {"TEL;TYPE=HOME;TYPE=FAX:1\r\n", {"home fax: 1"}, {}},
      {"TEL;TYPE=FAX,WORK:1\r\n", {"business fax: 1"}, {}},
      {"TEL;TYPE=FAX:1\r\nTEL;TYPE=FAX:2\r\n", {"business fax: 1", "home fax: 2"}, {}},
      {"TEL;TYPE=PAGER:1\r\n", {"pager: 1"}, {}},
      {"TEL;TYPE=CAR:1\r\n", {"car phone: 1"}, {}},
      {"TEL;TYPE=X-EVOLUTION-RADIO:1\r\n", {"radio phone: 1"}, {}},
      {"TEL;TYPE=X-EVOLUTION-ASSISTANT:1\r\n", {"assistant phone: 1"}, {}},
      {"X-MS-TEL;TYPE=VOICE,ASSISTANT:1\r\n", {"assistant phone: 1"}, {}},
      {"item1.TEL;TYPE=HOME:1\r\n", {"home phone: 1"}, {}},
      {"TEL;VALUE=uri;TYPE=\"work,voice\":tel:+49-40-123;ext=5\r\n",
       {"business phone: +49-40-123 ext. 5"},
       {}},
      {"TEL;TYPE=HOME:\r\n", {}, {}},
  });
}

TEST(VcardPhones, thatAskForAPlaceHaveIt) {
  expectRows({
      {"TEL;TYPE=HOME:1\r\nTEL;TYPE=HOME;X-QORV-PLACE=1:2\r\n",
       {"home phone: 2", "second home phone: 1"},
       {}},
      {"TEL;TYPE=HOME;X-QORV-PLACE=2:1\r\n", {"second home phone: 1"}, {}},
      {"TEL;TYPE=HOME;X-QORV-PLACE=3:1\r\n", {"home phone: 1"}, {}},
  });
}

TEST(VcardPhones, ofNoKindGoWhereThereIsRoom) {
  expectRows({
      {"TEL:1\r\n", {"home phone: 1"}, {"a phone number is kept as home phone: \"1\""}},
      {"TEL:1\r\nTEL;TYPE=HOME:2\r\n",
       {"home phone: 2", "second home phone: 1"},
       {"a phone number is kept as second home phone: \"1\""}},
      {"TEL;TYPE=VIDEO:1\r\n", {"home phone: 1"}, {"a phone number is kept as home phone: \"1\""}},
      {"TEL;TYPE=WORK,CELL:1\r\nTEL;TYPE=WORK,CELL:2\r\n",
       {"mobile phone: 1", "business phone: 2"},
       {"a phone number is kept as business phone: \"2\""}},
  });
}

TEST(VcardPhones, thatHaveNoRoomAreNamed) {
  const std::string full =
      "TEL;TYPE=HOME:1\r\nTEL;TYPE=HOME:2\r\nTEL;TYPE=HOME:3\r\nTEL;TYPE=CELL:4\r\nTEL;TYPE=CELL:5\r\n"
      "TEL;TYPE=WORK:6\r\nTEL;TYPE=WORK:7\r\nTEL:8\r\nTEL;TYPE=HOME,FAX:9\r\nTEL;TYPE=HOME,FAX:10\r\n";
  EXPECT_THAT(
      readOne(cardOf(full)).notes,
      ElementsAre("one second home phone more than there is room for is not kept on the device: \"3\"",
                  "one mobile phone more than there is room for is not kept on the device: \"5\"",
                  "one home fax more than there is room for is not kept on the device: \"10\"",
                  "a phone number of a kind that the device doesn't know is not kept on the device: \"8\""));
}

TEST(VcardPhones, loseThatTheyArePreferred) {
  const std::string note = "which phone number is preferred is not kept on the device";
  expectRows({{"TEL;TYPE=CELL,PREF:1\r\n", {"mobile phone: 1"}, {note}},
              {"TEL;TYPE=CELL;PREF=1:1\r\n", {"mobile phone: 1"}, {note}}});
}

TEST(VcardEmails, keepTheirOrder) {
  expectRows({
      {"EMAIL:a\r\nEMAIL;TYPE=INTERNET:b\r\nEMAIL;INTERNET:c\r\n",
       {"email: a", "second email: b", "third email: c"},
       {}},
      {"EMAIL:a\r\nEMAIL;TYPE=PREF:b\r\n", {"email: b", "second email: a"}, {}},
      {"EMAIL;PREF=20:a\r\nEMAIL:b\r\nEMAIL;PREF=3:c\r\n",
       {"email: c", "second email: a", "third email: b"},
       {}},
      {"EMAIL:a\r\nEMAIL;X-QORV-PLACE=3:b\r\n", {"email: a", "third email: b"}, {}},
      {"EMAIL:\r\n", {}, {}},
      {"EMAIL;TYPE=WORK:a\r\n",
       {"email: a"},
       {"whether e-mail is for home or work is not kept on the device"}},
  });
}

TEST(VcardEmails, moreThanThreeAreNamed) {
  EXPECT_THAT(readOne(cardOf("EMAIL:a\r\nEMAIL:b\r\nEMAIL:c\r\nEMAIL:d\r\nEMAIL;TYPE=PREF:e\r\n")).notes,
              ElementsAre("an e-mail address more than three is not kept on the device: \"c\"",
                          "an e-mail address more than three is not kept on the device: \"d\""));
}

TEST(VcardAddresses, goToThePlaceOfTheirKind) {
  expectRows({
      {"ADR;TYPE=HOME:;;1 Main St;York;N;YO1;UK\r\n",
       {"home street: 1 Main St", "home city: York", "home state: N", "home postal code: YO1",
        "home country: UK"},
       {}},
      {"ADR;WORK;ENCODING=QUOTED-PRINTABLE:;;1 Main St=0D=0ALeft;York\r\n",
       {"business street: 1 Main St\r\nLeft", "business city: York"},
       {}},
      {"ADR:;;;York;;;\r\n", {"other city: York"}, {}},
      {"ADR;TYPE=OTHER:;;;York;;;\r\n", {"other city: York"}, {}},
      {"ADR;TYPE=HOME,WORK:;;;York;;;\r\nADR;TYPE=HOME,WORK:;;;Leeds;;;\r\n",
       {"home city: York", "business city: Leeds"},
       {}},
      {"ADR;TYPE=HOME:;;;;;;\r\n", {}, {}},
      {"ADR;TYPE=HOME:;;;York;;;\r\nLABEL;TYPE=HOME:York\r\n", {"home city: York"}, {}},
  });
}

TEST(VcardAddresses, putIntoTheStreetWhatStandsAroundIt) {
  expectRows({{"ADR;TYPE=HOME:PO 5;Floor 2;1 Main St;York;;;\r\n",
               {"home street: Floor 2\r\n1 Main St\r\nPO 5", "home city: York"},
               {"parts of the home address are put into its street: \"Floor 2 1 Main St PO 5\""}}});
}

TEST(VcardAddresses, thatHaveNoRoomAreNamed) {
  EXPECT_THAT(readOne(cardOf("ADR;TYPE=HOME:;;;York;;;\r\nADR;TYPE=HOME:;;;Leeds;;;\r\n")).notes,
              ElementsAre("a second address of a kind is not kept on the device: \";;;Leeds;;;\""));
}

TEST(VcardAddresses, loseALabelAloneAndAPreference) {
  EXPECT_THAT(readOne(cardOf("LABEL;TYPE=HOME:York\r\n")).notes,
              ElementsAre("LABEL is not kept on the device: \"York\""));
  EXPECT_THAT(readOne(cardOf("ADR;TYPE=HOME,PREF:;;;York;;;\r\n")).notes,
              ElementsAre("which address is preferred is not kept on the device"));
}

}  // namespace
}  // namespace desktop
