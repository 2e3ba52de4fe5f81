#include "desktop/html_text.h"

#include <algorithm>
#include <array>
#include <libxml/HTMLparser.h>
#include <memory>
#include <string_view>

namespace desktop {

namespace {

struct DocumentDeleter {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

constexpr std::array<std::string_view, 5> kHidden{"head", "script", "style", "template", "title"};
constexpr std::array<std::string_view, 12> kLines{"address", "dd", "div", "dl", "dt", "form",
                                                  "hr",      "li", "ol",  "tr", "ul", "table"};
constexpr std::array<std::string_view, 9> kParagraphs{"p",  "h1", "h2",         "h3", "h4",
                                                      "h5", "h6", "blockquote", "pre"};

template <typename Names>
bool isOneOf(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::string_view viewOf(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

bool isBlank(char letter) {
  return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r' || letter == '\f';
}

class TextWriter {
 public:
  void add(const xmlNode* node) {
    for (; node != nullptr; node = node->next) {
      if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
        addWords(viewOf(node->content));
      } else if (node->type == XML_ELEMENT_NODE) {
        addElement(*node);
      }
    }
  }

  std::string take() {
    const std::size_t end = text_.find_last_not_of('\n');
    text_.resize(end == std::string::npos ? 0 : end + 1);
    if (!text_.empty()) text_ += '\n';
    return std::move(text_);
  }

 private:
  void addElement(const xmlNode& element) {
    const std::string_view name = viewOf(element.name);
    if (isOneOf(kHidden, name)) return;
    if (name == "br") return endLine();
    const std::size_t gap = isOneOf(kParagraphs, name) ? 2 : isOneOf(kLines, name) ? 1 : 0;
    beginLines(gap);
    if (name == "li") text_ += "- ";
    if (name == "td" || name == "th") isParted_ = !atLineBegin();
    add(element.children);
    beginLines(gap);
  }

  void addWords(std::string_view words) {
    for (const char letter : words) {
      if (isBlank(letter)) {
        isParted_ = true;
        continue;
      }
      if (isParted_ && !atLineBegin() && !text_.ends_with("- ")) text_ += ' ';
      isParted_ = false;
      text_ += letter;
    }
  }

  bool atLineBegin() const { return text_.empty() || text_.ends_with('\n'); }

  void endLine() {
    text_ += '\n';
    isParted_ = false;
  }

  /// Ends what there is with at least that many line ends.
  void beginLines(std::size_t count) {
    if (count == 0 || text_.empty()) return;
    const std::size_t ends = text_.size() - (text_.find_last_not_of('\n') + 1);
    if (ends < count) text_.append(count - ends, '\n');
    isParted_ = false;
  }

  std::string text_;
  bool isParted_ = false;  ///< a blank comes before the next word
};

}  // namespace

std::string textOfHtml(const std::string& html) {
  constexpr int kQuiet = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;
  const Document document(
      htmlReadMemory(html.data(), static_cast<int>(html.size()), nullptr, "UTF-8", kQuiet));
  TextWriter writer;
  if (document) writer.add(xmlDocGetRootElement(document.get()));
  return writer.take();
}

}  // namespace desktop
