// Owning types for what the MIME library hands out.
#pragma once

#include <gmime/gmime.h>
#include <memory>
#include <string>

namespace desktop {

struct ObjectUnref {
  void operator()(void* object) const { g_object_unref(object); }
};
template <typename Object>
using MimeHandle = std::unique_ptr<Object, ObjectUnref>;

struct ParserOptionsDeleter {
  void operator()(GMimeParserOptions* options) const { g_mime_parser_options_free(options); }
};
using ParserOptions = std::unique_ptr<GMimeParserOptions, ParserOptionsDeleter>;

struct DateUnref {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};
using DateHandle = std::unique_ptr<GDateTime, DateUnref>;

struct TimeZoneUnref {
  void operator()(GTimeZone* zone) const { g_time_zone_unref(zone); }
};
using TimeZoneHandle = std::unique_ptr<GTimeZone, TimeZoneUnref>;

struct GlibMemoryDeleter {
  void operator()(gchar* text) const { g_free(text); }
};
using GlibText = std::unique_ptr<gchar, GlibMemoryDeleter>;

/// To be called before anything else of the library is.
void startMimeLibrary();

/// The text as valid UTF-8; null is the empty text.
std::string mimeText(const char* text);

/// The same, of a text that the library leaves to its caller.
std::string takeMimeText(char* text);

/// What reading makes of things that aren't as they should be.
ParserOptions lenientOptions();

}  // namespace desktop
