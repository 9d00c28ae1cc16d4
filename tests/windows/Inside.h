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

}  // namespace drive
