#include "emulator/session/agent_module.h"

#include <dlfcn.h>
#include <string_view>

#include "emulator/session/session_error.h"

namespace emulator {

namespace {

constexpr const char* kExport = "rsCeApiMgr";
constexpr const char* kNotification = "DllMain";

[[noreturn]] void refuse(const std::filesystem::path& file, std::string_view reason) {
  throw SessionError(file.string() + ": the agent can't be loaded: " + std::string(reason));
}

/// The loader's complaint without the file's name, which it puts in front.
std::string loadersReason(const std::filesystem::path& file) {
  const std::string complaint = dlerror();
  const std::string prefix = file.string() + ": ";
  return complaint.starts_with(prefix) ? complaint.substr(prefix.size()) : complaint;
}

void* load(const std::filesystem::path& file) {
  // A name without a folder would be sought among the system's libraries.
  const auto path = std::filesystem::absolute(file);
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) refuse(file, loadersReason(path));
  return library;
}

template <typename Entry>
Entry find(void* library, const char* name, const std::filesystem::path& file) {
  void* const entry = dlsym(library, name);
  if (entry == nullptr) refuse(file, "it has no entry '" + std::string(name) + "'");
  return reinterpret_cast<Entry>(entry);
}

}  // namespace

void AgentModule::Unloader::operator()(void* library) const {
  dlclose(library);
}

AgentModule::AgentModule(const std::filesystem::path& file, HMODULE module)
    : library_(load(file)),
      module_(module),
      export_(find<Export>(library_.get(), kExport, file)),
      notify_(find<Notification>(library_.get(), kNotification, file)) {
  if (notify_(module_, DLL_PROCESS_ATTACH, nullptr) == FALSE) refuse(file, "it refuses to be attached");
}

AgentModule::~AgentModule() {
  notify_(module_, DLL_PROCESS_DETACH, nullptr);
}

HRESULT AgentModule::serve(IRAPIStream* stream) {
  return export_(0, nullptr, nullptr, nullptr, stream);
}

std::filesystem::path AgentModule::besideProgram() {
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  return (program.parent_path() / "../lib/QORVAPIMGR.so").lexically_normal();
}

}  // namespace emulator
