// Reading cards.
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "desktop/item_refused.h"
#include "desktop/text.h"
#include "desktop/vcard.h"
#include "desktop/vcard_address.h"
#include "desktop/vcard_cards.h"
#include "desktop/vcard_days.h"
#include "desktop/vcard_email.h"
#include "desktop/vcard_library.h"
#include "desktop/vcard_name.h"
#include "desktop/vcard_phone.h"
#include "desktop/vcard_texts.h"

namespace desktop {

namespace {

using Properties = std::vector<VcardProperty>;

constexpr std::array<std::u16string_view, 3> kVersions{u"2.1", u"3.0", u"4.0"};

/// Empty when the card has none.
std::u16string textOf(const Properties& properties, std::string_view name) {
  for (const VcardProperty& property : properties) {
    if (property.name == name) return oneLine(wholeText(property));
  }
  return {};
}

void checkVersion(const Properties& properties) {
  const std::u16string version = textOf(properties, "VERSION");
  if (version.empty()) throw ItemRefused("the card doesn't say its VERSION");
  if (std::find(kVersions.begin(), kVersions.end(), version) == kVersions.end()) {
    throw ItemRefused("VERSION " + shown(version) + " is none that is read: 2.1, 3.0 or 4.0");
  }
}

/// One thing in several languages or scripts counts once, as it stands first.
void dropOtherForms(Properties& properties, Notes& notes) {
  std::vector<std::pair<std::string, std::string>> seen;
  std::erase_if(properties, [&](const VcardProperty& property) {
    const std::string form(parameterOf(property, "ALTID"));
    if (form.empty()) return false;
    if (std::find(seen.begin(), seen.end(), std::pair(property.name, form)) == seen.end()) {
      seen.emplace_back(property.name, form);
      return false;
    }
    notes.add("another form of " + onOneLine(property.name) +
              " is not kept on the device: " + shown(oneLine(wholeText(property))));
    return true;
  });
}

class CardReader {
 public:
  explicit CardReader(std::string fileName) : fileName_(std::move(fileName)) {}

  void read(const VcardText& card) {
    std::string where = fileName_ + ":" + std::to_string(card.line);
    try {
      if (!card.fault.empty()) throw ItemRefused(card.fault);
      Properties properties = parseVcard(card.text);
      const std::string uid = toUtf8(textOf(properties, "UID"));
      if (!uid.empty()) where += ": " + onOneLine(uid);
      checkVersion(properties);
      claim(uid, card.line);
      file_.items.push_back(itemOf(std::move(properties), uid));
    } catch (const ItemRefused& refusal) {
      file_.problems.push_back({where, refusal.what()});
    }
  }

  FileItems take() { return std::move(file_); }

 private:
  void claim(const std::string& uid, int line) {
    if (uid.empty()) return;
    const auto [first, isNew] = lineOfUid_.emplace(uid, line);
    if (!isNew) {
      throw ItemRefused("its UID stands for another card of the file, at line " +
                        std::to_string(first->second));
    }
  }

  FileItem itemOf(Properties properties, const std::string& uid) const {
    Notes forms;
    dropOtherForms(properties, forms);
    VcardDraft draft(std::move(properties));
    draft.notes = std::move(forms);
    readTexts(draft);
    readDates(draft);
    readEmails(draft);
    readPhones(draft);
    readAddresses(draft);
    readNames(draft);
    draft.noteRest();
    if (uid.empty()) draft.notes.add("the card has no UID");
    return {fileName_, uid, std::move(draft.contact), draft.notes.take()};
  }

  std::string fileName_;
  std::map<std::string, int> lineOfUid_;
  FileItems file_;
};

}  // namespace

FileItems readVcards(std::string_view text, const std::string& fileName) {
  CardReader reader(fileName);
  for (const VcardText& card : splitVcards(text, fileName)) reader.read(card);
  return reader.take();
}

}  // namespace desktop
