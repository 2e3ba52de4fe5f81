// A mail as the mail format has it, in plain values. Texts are UTF-8.
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace desktop {

/// Without an address, a text that stands in an address's place.
struct MimeAddress {
  std::string name;
  std::string address;
};

struct MimeHeader {
  std::string name;
  std::string value;
};

/// A part that holds parts, or data.
struct MimePart {
  std::string type;      ///< in lower case: "text/plain", "multipart/mixed"
  std::string charset;   ///< of a text; empty when it isn't said
  std::string fileName;  ///< empty when there is none
  bool isAttachment = false;
  std::string data;  ///< decoded, in the text's own character set
  std::vector<MimePart> parts;
};

struct MimeMessage {
  std::string id;  ///< without its angle brackets
  std::optional<std::time_t> date;
  std::vector<MimeAddress> from;
  std::vector<MimeAddress> to;
  std::vector<MimeAddress> cc;
  std::vector<MimeAddress> bcc;
  std::string subject;
  std::vector<MimeHeader> headers;  ///< when read all of them; when written those beside the above
  MimePart content;
};

}  // namespace desktop
