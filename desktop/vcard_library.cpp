#include "desktop/vcard_library.h"

#include <algorithm>
#include <array>
#include <libebook-contacts/libebook-contacts.h>
#include <memory>

#include "desktop/input_error.h"
#include "desktop/item_refused.h"
#include "desktop/text.h"

namespace desktop {

namespace {

struct CardDeleter {
  void operator()(EVCard* card) const { g_object_unref(card); }
};
using CardHandle = std::unique_ptr<EVCard, CardDeleter>;

struct MemoryDeleter {
  void operator()(gchar* text) const { g_free(text); }
};
using OwnedText = std::unique_ptr<gchar, MemoryDeleter>;

/// Keeps the library's remarks about a file off standard error: what matters to a person is said by us.
class QuietLibrary {
 public:
  QuietLibrary() : id_(g_log_set_handler(kDomain, G_LOG_LEVEL_MASK, ignore, nullptr)) {}
  ~QuietLibrary() { g_log_remove_handler(kDomain, id_); }
  QuietLibrary(const QuietLibrary&) = delete;
  QuietLibrary& operator=(const QuietLibrary&) = delete;

 private:
  static constexpr const char* kDomain = "libebook-contacts";

  static void ignore(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

  guint id_;
};

/// Calls `use(Element&)` for each element; the list stays the library's.
template <typename Element, typename Use>
void forEach(GList* list, Use use) {
  for (; list != nullptr; list = list->next) use(*static_cast<Element*>(list->data));
}

std::string copyText(const gchar* text) {
  return text == nullptr ? std::string() : std::string(text);
}

std::vector<VcardParameter> readParameters(EVCardAttribute& attribute) {
  std::vector<VcardParameter> parameters;
  forEach<EVCardAttributeParam>(
      e_vcard_attribute_get_params(&attribute), [&](EVCardAttributeParam& parameter) {
        const std::string name = upperCase(copyText(e_vcard_attribute_param_get_name(&parameter)));
        forEach<gchar>(e_vcard_attribute_param_get_values(&parameter), [&](const gchar& value) {
          parameters.push_back({name, copyText(&value)});
        });
      });
  return parameters;
}

std::vector<std::u16string> readValues(EVCardAttribute& attribute, const std::string& name) {
  std::vector<std::u16string> values;
  forEach<GString>(e_vcard_attribute_get_values_decoded(&attribute), [&](const GString& value) {
    try {
      values.push_back(toUtf16(std::string_view(value.str, value.len)));
    } catch (const InputError&) {
      throw ItemRefused(name + " is no UTF-8 text");
    }
  });
  return values;
}

/// Bytes rather than a text; such a value means nothing to the device.
bool isBinary(const VcardProperty& property) {
  constexpr std::array<std::string_view, 4> kNames{"PHOTO", "LOGO", "SOUND", "KEY"};
  return std::find(kNames.begin(), kNames.end(), property.name) != kNames.end() &&
         upperCase(parameterOf(property, "ENCODING")).starts_with('B');
}

VcardProperty readProperty(EVCardAttribute& attribute) {
  VcardProperty property;
  property.group = copyText(e_vcard_attribute_get_group(&attribute));
  property.name = upperCase(copyText(e_vcard_attribute_get_name(&attribute)));
  property.parameters = readParameters(attribute);
  if (!isBinary(property)) property.values = readValues(attribute, property.name);
  return property;
}

/// The attribute is the card's from then on.
void addProperty(EVCard& card, const VcardProperty& property) {
  const gchar* group = property.group.empty() ? nullptr : property.group.c_str();
  EVCardAttribute* attribute = e_vcard_attribute_new(group, property.name.c_str());
  for (const VcardParameter& parameter : property.parameters) {
    e_vcard_attribute_add_param_with_value(attribute, e_vcard_attribute_param_new(parameter.name.c_str()),
                                           parameter.value.c_str());
  }
  for (const std::u16string& value : property.values) {
    e_vcard_attribute_add_value(attribute, toUtf8(value).c_str());
  }
  e_vcard_append_attribute(&card, attribute);
}

/// The library writes 3.0 at most. In 4.0 values are escaped and lines folded in the same way, and the version
/// comes right after BEGIN as well, so its line is all that the text of a 4.0 card differs in.
void changeVersion(std::string& text) {
  constexpr std::string_view kWritten = "VERSION:3.0";
  constexpr std::string_view kMeant = "VERSION:4.0";
  text.replace(text.find(kWritten), kWritten.size(), kMeant);
}

}  // namespace

std::vector<VcardProperty> parseVcard(const std::string& card) {
  const QuietLibrary quiet;
  const CardHandle parsed(e_vcard_new_from_string(card.c_str()));
  std::vector<VcardProperty> properties;
  forEach<EVCardAttribute>(e_vcard_get_attributes(parsed.get()), [&](EVCardAttribute& attribute) {
    properties.push_back(readProperty(attribute));
  });
  return properties;
}

std::string formatVcard(std::span<const VcardProperty> properties, VcardVersion version) {
  const CardHandle card(e_vcard_new());
  for (const VcardProperty& property : properties) addProperty(*card, property);
  const OwnedText written(e_vcard_to_string(card.get(), EVC_FORMAT_VCARD_30));
  std::string text = written.get();
  if (!text.ends_with("\r\n")) text += "\r\n";
  if (version == VcardVersion::V40) changeVersion(text);
  return text;
}

}  // namespace desktop
