// Windows, messages and message boxes.
#pragma once

#include "platform/types.h"

using WNDPROC = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

struct WNDCLASSW {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  LPCWSTR lpszMenuName;
  LPCWSTR lpszClassName;
};
static_assert(kHasDeviceLayout<sizeof(WNDCLASSW), 40>);

inline constexpr UINT WM_DESTROY = 2;
inline constexpr UINT WM_USER = 0x400;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000);
inline constexpr int WHITE_BRUSH = 0;
inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_SETFOREGROUND = 0x10000;

/// 0 on failure.
extern "C" ATOM RegisterClassW(const WNDCLASSW* description) CE_CALL(RegisterClassW);
/// Null when there is no such window; a null class or title matches any.
extern "C" HWND FindWindowW(LPCWSTR className, LPCWSTR title) CE_CALL(FindWindowW);
/// Null with ERROR_CANNOT_FIND_WND_CLASS when the class is unknown.
extern "C" HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x,
                                int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                                void* parameter) CE_CALL(CreateWindowExW);
extern "C" BOOL DestroyWindow(HWND window) CE_CALL(DestroyWindow);
extern "C" BOOL IsWindow(HWND window) CE_CALL(IsWindow);
extern "C" BOOL ShowWindow(HWND window, int command) CE_CALL(ShowWindow);
extern "C" BOOL UpdateWindow(HWND window) CE_CALL(UpdateWindow);
extern "C" LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    CE_CALL(SendMessageW);
extern "C" HGDIOBJ GetStockObject(int object) CE_CALL(GetStockObject);
/// Blocks until the user answers; the number of the button.
extern "C" int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) CE_CALL(MessageBoxW);
