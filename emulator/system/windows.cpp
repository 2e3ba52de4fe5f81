#include "emulator/system/windows.h"

#include <algorithm>
#include <utility>

#include "emulator/system/case_fold.h"

namespace emulator {
namespace {

/// Numbers of registered classes begin here.
constexpr ATOM kFirstAtom = 0xC000;

bool fits(const std::u16string& actual, std::optional<std::u16string_view> wanted) {
  return !wanted || equalFolded(actual, *wanted);
}

}  // namespace

ATOM Windows::registerClass(std::u16string_view name, WindowProcedure procedure) {
  if (name.empty()) {
    lastError_.set(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const auto [entry, isNew] =
      classes_.try_emplace(foldCase(name), Class{std::u16string(name), freeAtom(), std::move(procedure)});
  if (!isNew) lastError_.set(ERROR_CLASS_ALREADY_EXISTS);
  return isNew ? entry->second.atom : ATOM{0};
}

void Windows::unregisterClass(std::u16string_view name) {
  classes_.erase(foldCase(name));
}

bool Windows::hasClass(std::u16string_view name) const {
  return classes_.contains(foldCase(name));
}

HWND Windows::create(std::u16string_view className, std::u16string_view title, DWORD style, HWND parent) {
  const auto known = classes_.find(foldCase(className));
  if (known == classes_.end()) {
    lastError_.set(ERROR_CANNOT_FIND_WND_CLASS);
    return nullptr;
  }
  return add({known->second.name, std::u16string(title), style, parent, known->second.procedure});
}

HWND Windows::add(Window window) {
  last_ += 4;
  auto* const handle = reinterpret_cast<HWND>(last_);
  windows_.emplace(handle, std::move(window));
  return handle;
}

HWND Windows::find(std::optional<std::u16string_view> className,
                   std::optional<std::u16string_view> title) const {
  const auto found = std::ranges::find_if(windows_, [&](const auto& entry) {
    const Window& window = entry.second;
    return window.parent == nullptr && fits(window.className, className) && fits(window.title, title);
  });
  return found == windows_.end() ? nullptr : found->first;
}

const Window* Windows::get(HWND window) const {
  const auto found = windows_.find(window);
  return found == windows_.end() ? nullptr : &found->second;
}

bool Windows::show(HWND window, int command) {
  Window* shown = lookUp(window);
  return shown != nullptr && std::exchange(shown->visible, command != 0);
}

bool Windows::update(HWND window) {
  return lookUp(window) != nullptr;
}

bool Windows::destroy(HWND window) {
  if (lookUp(window) == nullptr) return false;
  send(window, WM_DESTROY, 0, 0);
  remove(window);
  return true;
}

LRESULT Windows::send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const Window* receiver = lookUp(window);
  if (receiver == nullptr || !receiver->procedure) return 0;
  // A copy: the procedure may destroy its own window.
  const WindowProcedure procedure = receiver->procedure;
  return procedure(window, message, wParam, lParam);
}

void Windows::remove(HWND window) {
  if (windows_.erase(window) == 0) return;
  const auto isInside = [window](const auto& entry) { return entry.second.parent == window; };
  for (auto child = std::ranges::find_if(windows_, isInside); child != windows_.end();
       child = std::ranges::find_if(windows_, isInside)) {
    remove(child->first);
  }
}

/// The least number that no class has.
ATOM Windows::freeAtom() const {
  ATOM atom = kFirstAtom;
  const auto hasIt = [&atom](const auto& entry) { return entry.second.atom == atom; };
  while (std::ranges::any_of(classes_, hasIt)) ++atom;
  return atom;
}

Window* Windows::lookUp(HWND window) {
  const auto found = windows_.find(window);
  if (found != windows_.end()) return &found->second;
  lastError_.set(ERROR_INVALID_WINDOW_HANDLE);
  return nullptr;
}

}  // namespace emulator
