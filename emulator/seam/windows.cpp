#include "platform/windows.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;
using emulator::textOf;

namespace {

std::optional<std::u16string_view> givenText(LPCWSTR text) {
  return text == nullptr ? std::nullopt : std::optional<std::u16string_view>(text);
}

/// The stock objects are numbered 0 to 19; what stands for them is never looked into.
constexpr int kStockObjects = 20;
constexpr std::uintptr_t kFirstStockObject = 0x00900000;

HGDIOBJ stockObject(int object) {
  if (object < 0 || object >= kStockObjects) return nullptr;
  return reinterpret_cast<HGDIOBJ>(kFirstStockObject + static_cast<std::uintptr_t>(object));
}

}  // namespace

ATOM RegisterClassW(const WNDCLASSW* description) {
  return call<&::RegisterClassW>(
      [&](Device& device) {
        return device.windows.registerClass(textOf(description->lpszClassName), description->lpfnWndProc);
      },
      description);
}

HWND FindWindowW(LPCWSTR className, LPCWSTR title) {
  return call<&::FindWindowW>(
      [&](Device& device) { return device.windows.find(givenText(className), givenText(title)); }, className,
      title);
}

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menu, HINSTANCE instance, void* parameter) {
  return call<&::CreateWindowExW>(
      [&](Device& device) { return device.windows.create(textOf(className), textOf(title), style, parent); },
      extendedStyle, className, title, style, x, y, width, height, parent, menu, instance, parameter);
}

BOOL DestroyWindow(HWND window) {
  return call<&::DestroyWindow>([&](Device& device) { return device.windows.destroy(window); }, window);
}

BOOL IsWindow(HWND window) {
  return call<&::IsWindow>([&](Device& device) { return device.windows.get(window) != nullptr; }, window);
}

BOOL ShowWindow(HWND window, int command) {
  return call<&::ShowWindow>([&](Device& device) { return device.windows.show(window, command); }, window,
                             command);
}

BOOL UpdateWindow(HWND window) {
  return call<&::UpdateWindow>([&](Device& device) { return device.windows.update(window); }, window);
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return call<&::SendMessageW>(
      [&](Device& device) { return device.windows.send(window, message, wParam, lParam); }, window, message,
      wParam, lParam);
}

HGDIOBJ GetStockObject(int object) {
  return call<&::GetStockObject>([&](Device&) { return stockObject(object); }, object);
}

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) {
  return call<&::MessageBoxW>(
      [&](Device& device) { return device.messageBoxes.show(textOf(text), textOf(caption), style); }, owner,
      text, caption, style);
}
