#pragma once

// The others need windows.h ahead of them.
// clang-format off
#include <windows.h>
#include <commctrl.h>
#include <dbghelp.h>
#include <psapi.h>
#include <tlhelp32.h>
// clang-format on

namespace drive {

// What only the driven program itself can read of its windows: a menu, the icon of a message box, the tips of a
// tooltip.
enum class Ask { Menu, Icon, Tips };

// Lies in memory that both programs share, under this name: the question to the library inside, and its answer. The
// library answers when a window gets the message of the same name.
constexpr auto QuestionName = L"Velmaro.Question";
struct Question {
  Ask ask;
  wchar_t answer[8000];
};

}  // namespace drive
