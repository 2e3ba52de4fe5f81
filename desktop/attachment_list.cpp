#include "desktop/attachment_list.h"

#include <algorithm>

#include "desktop/item_text.h"
#include "desktop/text.h"

namespace desktop {

namespace {

// How the agent has its temporary files named, in lower case.
constexpr std::u16string_view kPrefix = u"qrv";
constexpr std::u16string_view kExtension = u".tmp";

std::u16string_view folderOf(std::u16string_view path) {
  return path.substr(0, path.rfind(u'\\') + 1);
}

bool isTemporaryFile(std::u16string_view path) {
  const std::u16string name = foldCase(std::u16string(path.substr(folderOf(path).size())));
  return name.size() > kPrefix.size() + kExtension.size() && name.starts_with(kPrefix) &&
         name.ends_with(kExtension);
}

std::u16string_view takeLine(std::u16string_view& rest) {
  const std::u16string_view line = rest.substr(0, rest.find(u'\n'));
  rest.remove_prefix(std::min(rest.size(), line.size() + 1));
  return line;
}

std::u16string number(std::size_t value) {
  return toUtf16(std::to_string(value));
}

}  // namespace

std::vector<AttachedFile> readAttachmentList(std::u16string_view list) {
  const std::u16string_view folder = folderOf(list.substr(0, list.find(u'\n')));
  std::vector<AttachedFile> files;
  bool isNamed = true;
  while (!list.empty()) {
    const std::u16string_view line = takeLine(list);
    if (isNamed && isTemporaryFile(line) && folderOf(line) == folder) {
      files.push_back({{}, {}, std::u16string(line)});
      isNamed = false;
    } else if (files.empty()) {
      break;
    } else {
      std::u16string& name = files.back().name;
      if (isNamed) name += u'\n';
      name += line;
      isNamed = true;
    }
  }
  if (files.empty()) files.emplace_back();
  return files;
}

std::u16string writeAttachmentList(const std::vector<AttachedFile>& files) {
  std::u16string list = number(files.size()) + u" ";
  for (const AttachedFile& file : files) {
    list += number(file.path.size()) + u" " + file.path + number(file.name.size()) + u" " + file.name;
  }
  return list;
}

}  // namespace desktop
