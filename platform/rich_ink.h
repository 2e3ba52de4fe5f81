// The rich-ink control: a window class of "RichInk.dll", driven by two stream messages.
#pragma once

#include "platform/windows.h"

inline constexpr UINT EM_STREAMIN = WM_USER + 73;
inline constexpr UINT EM_STREAMOUT = WM_USER + 74;

inline constexpr UINT SF_TEXT = 1;
inline constexpr UINT SF_RTF = 2;
inline constexpr UINT SF_UNICODE = 0x10;
inline constexpr UINT SF_UTEXT = SF_TEXT | SF_UNICODE;
inline constexpr UINT SF_PWI = 0x10802;

/// Called until it moves 0 bytes or returns an error word other than 0.
using EDITSTREAMCALLBACK = DWORD (*)(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved);

/// The message's lParam; the format is its wParam.
struct EDITSTREAM {
  DWORD_PTR dwCookie;
  DWORD dwError;
  EDITSTREAMCALLBACK pfnCallback;
};
static_assert(kHasDeviceLayout<sizeof(EDITSTREAM), 12>);

/// The entry "InitRichInkDLL", which registers the class.
using InitRichInkDLL_t = void (*)();
