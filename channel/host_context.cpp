#include "channel/host_context.h"

#include <algorithm>
#include <string_view>

#include "platform/system.h"

namespace qorv {

namespace {

std::u16string modulePath(HMODULE module) {
  WCHAR path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  return {path, length < MAX_PATH ? length : MAX_PATH};
}

/// The last component of the directory that holds the module.
std::u16string installationDirectory(HMODULE module) {
  const std::u16string path = modulePath(module);
  const std::size_t end = path.rfind(u'\\');
  if (end == std::u16string::npos) return {};
  const std::u16string directory = path.substr(0, end);
  return directory.substr(directory.rfind(u'\\') + 1);
}

/// The magnitude of the text's leading decimal number, before which blanks and a sign may stand; 0 without
/// one.
int leadingNumber(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
  if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) text.remove_prefix(1);
  int number = 0;
  for (const WCHAR c : text) {
    if (c < u'0' || c > u'9') break;
    number = number * 10 + (c - u'0');
  }
  return number;
}

std::u16string instanceNumber(HMODULE module) {
  std::u16string component = installationDirectory(module);
  const bool isInstance = component.size() == 3 && leadingNumber(component) != 0;
  return isInstance ? component : std::u16string();
}

}  // namespace

HostContext& hostContext() {
  static HostContext context;
  return context;
}

bool prepareHostContext(HMODULE module, LPCWSTR applicationName, const HostWindowNames& window) {
  const std::u16string instance = instanceNumber(module);
  HostContext context;
  context.module = module;
  context.applicationName = applicationName;
  if (!instance.empty()) {
    context.databaseSuffix = u"_" + instance;
    context.registrySuffix = u"\\" + instance;
  }
  context.windowClassName = window.className + context.databaseSuffix;
  context.windowName = window.windowName + context.databaseSuffix;
  context.contractDatabase = u"\\QorvContracts" + context.databaseSuffix;
  context.contactLog = u"\\QorvContactLog" + context.databaseSuffix;
  context.appointmentLog = u"\\QorvAppointmentLog" + context.databaseSuffix;
  context.taskLog = u"\\QorvTaskLog" + context.databaseSuffix;
  context.mailLog = u"\\QorvMailLog" + context.databaseSuffix;
  context.registryRoot = u"SOFTWARE\\Halvern" + context.registrySuffix;
  hostContext() = context;
  return true;
}

}  // namespace qorv
