// What the tests of cards share: short ways to a card, to its contact, and to what was said about it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "desktop/text.h"
#include "desktop/vcard.h"

namespace desktop {

/// A card around the given lines, which end in CRLF. It has a name and a UID.
inline std::string cardOf(const std::string& lines, const std::string& version = "3.0") {
  return "BEGIN:VCARD\r\nVERSION:" + version + "\r\nUID:1\r\nFN:Ann Lee\r\nN:Lee;Ann;;;\r\n" + lines +
         "END:VCARD\r\n";
}

/// A card with no more than the given lines.
inline std::string bareCardOf(const std::string& lines, const std::string& version = "3.0") {
  return "BEGIN:VCARD\r\nVERSION:" + version + "\r\nUID:1\r\n" + lines + "END:VCARD\r\n";
}

struct ReadCard {
  Contact contact;
  std::vector<std::string> notes;
};

/// The one card of a text in which nothing is wrong.
inline ReadCard readOne(const std::string& text) {
  FileItems file = readVcards(text, "file.vcf");
  for (const FileProblem& problem : file.problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  if (file.items.size() != 1) {
    ADD_FAILURE() << file.items.size() << " cards in " << text;
    return {};
  }
  return {std::get<Contact>(file.items[0].item), file.items[0].notes};
}

inline std::vector<std::string> problemsOf(const std::string& text) {
  std::vector<std::string> problems;
  for (const FileProblem& problem : readVcards(text, "file.vcf").problems) {
    problems.push_back(problem.where + ": " + problem.what);
  }
  return problems;
}

}  // namespace desktop
