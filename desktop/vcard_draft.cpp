#include "desktop/vcard_draft.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "desktop/item_text.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::size_t kShownLength = 60;
constexpr std::string_view kLabel = "X-ABLABEL";
constexpr std::u16string_view kOwnLabelBegin = u"_$!<";
constexpr std::u16string_view kOwnLabelEnd = u">!$_";

/// What tells nothing about the person.
constexpr std::array<std::string_view, 16> kTechnical{
    "VERSION",        "PRODID",      "REV",          "UID",
    "PROFILE",        "SOURCE",      "NAME",         "X-ABUID",
    "X-ABADR",        "X-ABSHOWAS",  "X-IMAGETYPE",  "X-IMAGEHASH",
    "X-MOZILLA-HTML", "X-GENERATOR", "CLIENTPIDMAP", "X-MS-OL-DEFAULT-POSTAL-ADDRESS",
};

bool isOwnLabel(std::u16string_view label) {
  return label.starts_with(kOwnLabelBegin) && label.ends_with(kOwnLabelEnd);
}

bool isMissed(const VcardProperty& property) {
  if (std::find(kTechnical.begin(), kTechnical.end(), property.name) != kTechnical.end()) return false;
  if (property.name == "CLASS") return wholeText(property) != u"PUBLIC";
  return true;
}

}  // namespace

std::u16string oneLine(std::u16string_view text) {
  return asOneLine(withFileLineEnds(text));
}

std::u16string manyLines(std::u16string_view text) {
  return withDeviceLineEnds(withFileLineEnds(text));
}

std::string shown(std::u16string_view text) {
  return quoted(cutTo(text, kShownLength)) + (text.size() > kShownLength ? "..." : "");
}

std::vector<VcardProperty> VcardDraft::takeIf(std::string_view name, const Condition& condition) {
  const auto rest = std::stable_partition(
      properties_.begin(), properties_.end(),
      [&](const VcardProperty& property) { return property.name != name || !condition(property); });
  std::vector<VcardProperty> taken(std::make_move_iterator(rest), std::make_move_iterator(properties_.end()));
  properties_.erase(rest, properties_.end());
  return taken;
}

std::vector<VcardProperty> VcardDraft::take(std::string_view name) {
  return takeIf(name, [](const VcardProperty&) { return true; });
}

std::u16string VcardDraft::takeText(std::string_view name) {
  std::u16string first;
  for (const VcardProperty& property : take(name)) {
    const std::u16string text = oneLine(wholeText(property));
    if (first.empty()) {
      first = text;
    } else if (text != first) {
      noteLost("a second " + std::string(name), text);
    }
  }
  return first;
}

std::u16string VcardDraft::labelOf(const VcardProperty& property) const {
  for (const VcardProperty& other : properties_) {
    if (other.name != kLabel || other.group.empty() || other.group != property.group) continue;
    std::u16string label = oneLine(wholeText(other));
    if (!isOwnLabel(label)) return label;
    return label.substr(kOwnLabelBegin.size(), label.size() - kOwnLabelBegin.size() - kOwnLabelEnd.size());
  }
  return {};
}

void VcardDraft::noteLost(const std::string& what, std::u16string_view text) {
  notes.add(what + " is not kept on the device" + (text.empty() ? "" : ": " + shown(text)));
}

void VcardDraft::noteRest() {
  for (const VcardProperty& property : properties_) {
    const std::u16string text = oneLine(wholeText(property));
    if (property.name == kLabel) {
      if (!isOwnLabel(text)) noteLost("a label", text);
    } else if (isMissed(property)) {
      noteLost(onOneLine(property.name), text);
    }
  }
}

}  // namespace desktop
