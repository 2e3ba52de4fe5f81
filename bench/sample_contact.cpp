#include "bench/sample_contact.h"

#include <stdexcept>
#include <string>

namespace bench {
namespace {

std::u16string numbered(std::u16string_view text, int number) {
  const std::string digits = std::to_string(number);
  return std::u16string(text) + std::u16string(digits.begin(), digits.end());
}

}  // namespace

desktop::Contact sampleContact(int number) {
  desktop::Contact made;
  made.firstName = numbered(u"Ann ", number);
  made.lastName = numbered(u"Lee ", number);
  made.company = u"Acme";
  made.jobTitle = u"Head of Research";
  made.email1 = numbered(u"ann@example.org/", number);
  made.mobilePhone = numbered(u"+44 7700 ", number);
  made.homePhone = numbered(u"+44 1904 ", number);
  made.homeStreet = numbered(u"Mill Lane ", number);
  made.homeCity = u"York";
  made.homePostalCode = u"YO1 7AA";
  made.categories = u"Business,Climbing";
  made.body = u"Met at the fair in Leeds.\r\nSend the prints by post.";
  return made;
}

void putSample(emulator::Device& device, emulator::ItemRecord& record, const desktop::Contact& contact) {
  using emulator::contactProperty;
  const auto put = [&](std::size_t place, const std::u16string& text) {
    if (device.objectModel.items().put(record, place, text) != 0)
      throw std::runtime_error("a text was refused");
  };
  put(contactProperty("FirstName"), contact.firstName);
  put(contactProperty("LastName"), contact.lastName);
  put(contactProperty("CompanyName"), contact.company);
  put(contactProperty("JobTitle"), contact.jobTitle);
  put(contactProperty("Email1Address"), contact.email1);
  put(contactProperty("MobileTelephoneNumber"), contact.mobilePhone);
  put(contactProperty("HomeTelephoneNumber"), contact.homePhone);
  put(contactProperty("HomeAddressStreet"), contact.homeStreet);
  put(contactProperty("HomeAddressCity"), contact.homeCity);
  put(contactProperty("HomeAddressPostalCode"), contact.homePostalCode);
  put(contactProperty("Categories"), contact.categories);
  put(contactProperty("Body"), contact.body);
}

}  // namespace bench
