#include "apps/qorv_sync/file_style_option.h"

#include <map>

namespace qorv_sync {

void addStyleOption(CLI::App& command, desktop::FileStyle& style) {
  using desktop::VcardVersion;
  static const std::map<std::string, VcardVersion> kVersions{{"3.0", VcardVersion::V30},
                                                             {"4.0", VcardVersion::V40}};
  const auto choose = [&style](const std::string& version) { style.vcard = kVersions.at(version); };
  command.add_option_function<std::string>("--vcard", choose, "Version of the cards that are written")
      ->check(CLI::IsMember(kVersions))
      ->default_str("3.0");
}

}  // namespace qorv_sync
