#include "desktop/mail_body.h"

#include <algorithm>

#include "desktop/attachment_list.h"
#include "desktop/charset.h"
#include "desktop/html_text.h"
#include "desktop/input_error.h"
#include "desktop/item_refused.h"
#include "desktop/item_text.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::string_view kPlain = "text/plain";
constexpr std::string_view kHtml = "text/html";
constexpr std::string_view kAlternative = "multipart/alternative";

bool isMultipart(const MimePart& part) {
  return part.type.starts_with("multipart/");
}

/// A part that is shown, not a file that lies beside it.
bool isShown(const MimePart& part, std::string_view type) {
  return part.type == type && !part.isAttachment && part.fileName.empty();
}

/// Whether that kind of text is shown by the part or by one in it.
bool shows(const MimePart& part, std::string_view type) {
  return isShown(part, type) ||
         std::ranges::any_of(part.parts, [&](const MimePart& inner) { return shows(inner, type); });
}

bool isUtf8(const std::string& text) {
  try {
    toUtf16(text);
    return true;
  } catch (const InputError&) {
    return false;
  }
}

std::string defaultName(const MimePart& part, std::size_t number) {
  const std::string_view type = part.type;
  const char* extension = type == "message/rfc822" ? ".eml" : type == "text/calendar" ? ".ics" : "";
  return "attachment-" + std::to_string(number) + (type == kHtml ? ".html" : extension);
}

/// The name as one that files on the device can have.
std::u16string fileNameFor(const std::string& name) {
  std::u16string made = toUtf16(name);
  const auto isForbidden = [](char16_t letter) {
    return letter < u' ' || std::u16string_view(u"\\/:*?\"<>|").find(letter) != std::u16string_view::npos;
  };
  std::ranges::replace_if(made, isForbidden, u'_');
  if (made.size() < kMaxAttachmentText) return made;
  const std::size_t dot = std::min(made.rfind(u'.'), made.size());
  constexpr std::size_t kLongestExtension = 16;
  std::u16string extension = made.substr(dot);
  if (extension.size() > kLongestExtension) extension.clear();
  return std::u16string(cutTo(made, kMaxAttachmentText - 1 - extension.size())) + extension;
}

class BodyBuilder {
 public:
  explicit BodyBuilder(MailBody& body) : body_(body) {}

  void add(const MimePart& part) {
    if (part.type == kAlternative) {
      addAlternatives(part.parts);
    } else if (isMultipart(part)) {
      for (const MimePart& inner : part.parts) add(inner);
    } else if (isShown(part, kPlain)) {
      addText(textOf(part));
    } else if (isShown(part, kHtml)) {
      addText(textOfHtml(textOf(part)));
      note("its text is what its HTML form says");
    } else {
      attach(part);
    }
  }

 private:
  /// One text of them; what is none, as an invitation, goes along as a file.
  void addAlternatives(const std::vector<MimePart>& parts) {
    const auto showing = [&](std::string_view type) {
      return std::ranges::find_if(parts, [&](const MimePart& part) { return shows(part, type); });
    };
    auto chosen = showing(kPlain);
    if (chosen == parts.end()) chosen = showing(kHtml);
    for (auto part = parts.begin(); part != parts.end(); ++part) {
      if (part == chosen || !(shows(*part, kPlain) || shows(*part, kHtml))) add(*part);
    }
  }

  std::string textOf(const MimePart& part) {
    const bool isUnnamed = part.charset.empty() || part.charset == "us-ascii";
    std::string text;
    if (isUnnamed && isUtf8(part.data)) {
      text = part.data;
    } else {
      try {
        text = convertToUtf8(part.data, isUnnamed ? "WINDOWS-1252" : part.charset);
      } catch (const ItemRefused& refusal) {
        text = isUtf8(part.data) ? part.data : convertToUtf8(part.data, "ISO-8859-1");
        note(std::string(refusal.what()) + "; some characters may be wrong");
      }
    }
    if (text.find('\0') != std::string::npos) note("NULs in its text are left out");
    std::erase(text, '\0');
    return text;
  }

  void addText(const std::string& text) {
    if (!body_.text.empty() && !text.empty()) {
      body_.text += body_.text.ends_with('\n') ? "\n" : "\n\n";
    }
    body_.text += text;
  }

  void attach(const MimePart& part) {
    const std::string name =
        part.fileName.empty() ? defaultName(part, body_.attachments.size() + 1) : part.fileName;
    AttachedFile file;
    file.name = fileNameFor(name);
    if (file.name != toUtf16(name)) note("the attachment's name on the device is " + quoted(file.name));
    file.data.assign(part.data.begin(), part.data.end());
    body_.attachments.push_back(std::move(file));
  }

  void note(const std::string& what) {
    if (std::ranges::find(body_.notes, what) == body_.notes.end()) body_.notes.push_back(what);
  }

  MailBody& body_;
};

}  // namespace

MailBody bodyOf(const MimePart& content) {
  MailBody body;
  BodyBuilder(body).add(content);
  return body;
}

}  // namespace desktop
