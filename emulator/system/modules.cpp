#include "emulator/system/modules.h"

#include <algorithm>
#include <utility>

#include "emulator/system/case_fold.h"

namespace emulator {
namespace {

/// Module handles look like the addresses at which the platform maps libraries; the agent's is the first.
constexpr std::uintptr_t kFirstModule = 0x01E00000;
constexpr std::uintptr_t kModuleStep = 0x00010000;

/// The form under which a library is kept: no folder, with its extension, folded.
std::u16string keyOf(std::u16string_view name) {
  std::u16string key = foldCase(name.substr(name.rfind(u'\\') + 1));
  if (key.find(u'.') == std::u16string::npos) key += u".DLL";
  return key;
}

}  // namespace

void Modules::provide(std::u16string_view name, ModuleEntries entries, std::function<void()> unloaded) {
  auto* const module = reinterpret_cast<HMODULE>(kFirstModule + kModuleStep * (libraries_.size() + 1));
  const auto [library, isNew] = libraries_.try_emplace(
      keyOf(name), Library{u"\\Windows\\" + std::u16string(name), ModuleEntries(), module, {}});
  library->second.entries = std::move(entries);
  library->second.unloaded = std::move(unloaded);
}

HMODULE Modules::load(std::u16string_view name) {
  const auto found = libraries_.find(keyOf(name));
  if (found == libraries_.end()) {
    lastError_.set(ERROR_MOD_NOT_FOUND);
    return nullptr;
  }
  ++found->second.loads;
  return found->second.module;
}

bool Modules::unload(HMODULE module) {
  Library* library = loaded(module);
  if (library == nullptr) return false;
  if (--library->loads == 0 && library->unloaded) library->unloaded();
  return true;
}

FARPROC Modules::entry(HMODULE module, std::u16string_view name) {
  const Library* library = loaded(module);
  if (library == nullptr) return nullptr;
  const auto found = library->entries.find(name);
  if (found != library->entries.end()) return found->second;
  lastError_.set(ERROR_PROC_NOT_FOUND);
  return nullptr;
}

DWORD Modules::fileName(HMODULE module, WCHAR* name, DWORD capacity) {
  const Library* library = module == agent() ? nullptr : loaded(module);
  if ((module != agent() && library == nullptr) || capacity == 0) return 0;
  const std::u16string path = library == nullptr ? configuration_.modulePath() : library->path;
  const std::size_t length = std::min<std::size_t>(path.size(), capacity - 1);
  *std::copy_n(path.begin(), length, name) = u'\0';
  return static_cast<DWORD>(length);
}

HMODULE Modules::agent() {
  return reinterpret_cast<HMODULE>(kFirstModule);
}

std::size_t Modules::loadCount() const {
  std::size_t loads = 0;
  for (const auto& [name, library] : libraries_) loads += library.loads;
  return loads;
}

Modules::Library* Modules::loaded(HMODULE module) {
  const auto found = std::ranges::find_if(libraries_, [module](const auto& entry) {
    return entry.second.module == module && entry.second.loads > 0;
  });
  if (found != libraries_.end()) return &found->second;
  lastError_.set(ERROR_INVALID_HANDLE);
  return nullptr;
}

}  // namespace emulator
