#include "desktop/mime_handles.h"

namespace desktop {

void startMimeLibrary() {
  static const bool isStarted = (g_mime_init(), true);
  static_cast<void>(isStarted);
}

std::string mimeText(const char* text) {
  return text == nullptr ? std::string() : takeMimeText(g_utf8_make_valid(text, -1));
}

std::string takeMimeText(char* text) {
  const GlibText owned(text);
  return owned && g_utf8_validate(text, -1, nullptr) ? std::string(text) : mimeText(text);
}

ParserOptions lenientOptions() {
  ParserOptions options(g_mime_parser_options_new());
  const char* charsets[] = {"utf-8", "windows-1252", nullptr};
  g_mime_parser_options_set_fallback_charsets(options.get(), charsets);
  g_mime_parser_options_set_address_compliance_mode(options.get(), GMIME_RFC_COMPLIANCE_LOOSE);
  g_mime_parser_options_set_rfc2047_compliance_mode(options.get(), GMIME_RFC_COMPLIANCE_LOOSE);
  g_mime_parser_options_set_parameter_compliance_mode(options.get(), GMIME_RFC_COMPLIANCE_LOOSE);
  g_mime_parser_options_set_allow_addresses_without_domain(options.get(), TRUE);
  return options;
}

}  // namespace desktop
