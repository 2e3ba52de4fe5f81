#include "desktop/vcard_line.h"

#include <algorithm>

#include "desktop/charset.h"
#include "desktop/input_error.h"
#include "desktop/text.h"
#include "desktop/vcard_property.h"

namespace desktop {

namespace {

constexpr std::string_view kCharset = ";CHARSET=";

bool isNameLetter(char letter) {
  return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
         (letter >= '0' && letter <= '9') || letter == '-' || letter == '_' || letter == '.';
}

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view fullName(std::string_view line) {
  return line.substr(0, std::min(line.find_first_of(":;"), line.size()));
}

/// In upper case.
std::string parametersOf(std::string_view line) {
  const std::size_t colon = valueColon(line);
  return colon == std::string_view::npos ? std::string() : upperCase(line.substr(0, colon));
}

bool isUtf8(std::string_view text) {
  try {
    toUtf16(text);
    return true;
  } catch (const InputError&) {
    return false;
  }
}

}  // namespace

std::size_t valueColon(std::string_view line) {
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') isQuoted = !isQuoted;
    if (line[i] == ':' && !isQuoted) return i;
  }
  return std::string_view::npos;
}

std::string lineName(std::string_view line) {
  const std::string_view name = fullName(line);
  const std::size_t dot = name.find_last_of('.');
  return upperCase(withoutBlanks(dot == std::string_view::npos ? name : name.substr(dot + 1)));
}

bool marksCard(std::string_view line, std::string_view name) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return false;
  // A blank before it would make it the end of a folded line.
  return equalsInAnyCase(line.substr(0, colon), name) &&
         equalsInAnyCase(withoutBlanks(line.substr(colon + 1)), "VCARD");
}

bool isQuotedPrintable(std::string_view line) {
  return parametersOf(line).find("QUOTED-PRINTABLE") != std::string::npos;
}

bool isBase64(std::string_view line) {
  const std::string parameters = parametersOf(line);
  return parameters.find("BASE64") != std::string::npos || parameters.find("ENCODING=B") != std::string::npos;
}

std::string faultOfLine(std::string_view line) {
  const std::string_view name = fullName(line);
  const bool isNamed = !name.empty() && !name.starts_with('.') && !name.ends_with('.') &&
                       std::all_of(name.begin(), name.end(), isNameLetter);
  if (line.find('\0') != std::string_view::npos) return "holds a NUL";
  if (valueColon(line) == std::string_view::npos) return "is no property: it has no colon";
  if (!isNamed) return "is no property: it has no name";
  if (!isUtf8(line)) return "is no UTF-8 text";
  return {};
}

std::string lineInUtf8(std::string line) {
  const std::string parameters = parametersOf(line);
  const std::size_t begin = parameters.find(kCharset);
  if (begin == std::string::npos || isQuotedPrintable(line) || isBase64(line)) return line;
  const std::size_t nameBegin = begin + kCharset.size();
  const std::size_t end = std::min(parameters.find(';', nameBegin), parameters.size());
  const std::string charset = parameters.substr(nameBegin, end - nameBegin);
  const std::string value = convertToUtf8(std::string_view(line).substr(parameters.size() + 1), charset);
  return line.substr(0, begin) + line.substr(end, parameters.size() + 1 - end) + value;
}

std::string withoutLists(std::string line) {
  if (lineName(line) != "N") return line;
  for (std::size_t i = valueColon(line); i < line.size(); ++i) {
    if (line[i] == '\\') {
      ++i;
    } else if (line[i] == ',') {
      line[i] = ' ';
    }
  }
  return line;
}

}  // namespace desktop
