// Owning types for what libical hands out.
#pragma once

#include <cstdlib>
#include <libical/ical.h>
#include <memory>
#include <string>

namespace desktop {

struct ComponentDeleter {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using ComponentHandle = std::unique_ptr<icalcomponent, ComponentDeleter>;

struct ZoneDeleter {
  void operator()(icaltimezone* zone) const { icaltimezone_free(zone, 1); }
};
using ZoneHandle = std::unique_ptr<icaltimezone, ZoneDeleter>;

struct RecurrenceIteratorDeleter {
  void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};
using RecurrenceIterator = std::unique_ptr<icalrecur_iterator, RecurrenceIteratorDeleter>;

struct MemoryDeleter {
  void operator()(char* text) const { icalmemory_free_buffer(text); }
};

/// Takes over a text from one of libical's calls whose name ends in _r; null is the empty text.
inline std::string takeText(char* text) {
  const std::unique_ptr<char, MemoryDeleter> owned(text);
  return text == nullptr ? std::string() : std::string(text);
}

/// The text of a libical call that keeps it; null is the empty text.
inline std::string copyText(const char* text) {
  return text == nullptr ? std::string() : std::string(text);
}

/// Calls `use(icalproperty&)` for each property of the kind.
template <typename Use>
void forEachProperty(icalcomponent& component, icalproperty_kind kind, Use use) {
  for (icalproperty* property = icalcomponent_get_first_property(&component, kind); property != nullptr;
       property = icalcomponent_get_next_property(&component, kind)) {
    use(*property);
  }
}

}  // namespace desktop
