#pragma once

// The others need windows.h ahead of them.
// clang-format off
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <psapi.h>
#include <tlhelp32.h>
// clang-format on

namespace drive {

// A menu can be read only by the program that shows it. The question is a message of this name to the window of the
// menu; the library inside answers in memory of the same name, which both programs share.
constexpr auto MenuQuestion = L"Velmaro.Menu";
using MenuAnswer = wchar_t[8000];

// Wine can't be told that the user wants high contrast. A message of this name to a window has the library inside tell
// it to the window's program, for as long as that runs.
constexpr auto HighContrast = L"Velmaro.HighContrast";

}  // namespace drive
