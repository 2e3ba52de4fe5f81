// "mail": known, but this version of the emulated device has no store for it.
#include <algorithm>
#include <array>

#include "emulator/snapshot/section_handlers.h"

namespace emulator {
namespace {

constexpr std::array kMailFolders{"Inbox", "Outbox", "Sent Items", "Drafts", "Deleted Items"};

void requireEmpty(const JsonNode& list) {
  list.forEachElement(
      [](const JsonNode& entry) { entry.refuse("messages are not supported by this version"); });
}

}  // namespace

void loadMail(Device&, const JsonNode& node) {
  node.forEachMember([](std::string_view folder, const JsonNode& messages) {
    if (std::ranges::find(kMailFolders, folder) == kMailFolders.end()) messages.refuse("unknown key");
    requireEmpty(messages);
  });
}

Json dumpMail(Device&) {
  Json folders = Json::object();
  for (const char* folder : kMailFolders) folders[folder] = Json::array();
  return folders;
}

}  // namespace emulator
