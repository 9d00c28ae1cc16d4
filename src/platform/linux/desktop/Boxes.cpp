#include <algorithm>
#include <string>

#include "platform/comdlg32.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/ground/Say.h"
#include "platform/user32.h"

// What the platform shows through the toolkit, and what is left of it where there is none.
namespace platform {
namespace {

using onlinux::LoadedToolkit;
using onlinux::TheToolkit;

// Nobody can be asked: the text goes to the error output, and every question gets the answer that changes nothing.
int AnswerUnseen(const std::string& text, std::uint32_t flags) {
  constexpr std::uint32_t buttonBits = 15;
  auto lines = text;
  std::erase(lines, '\r');
  onlinux::Say(lines);
  if ((flags & buttonBits) == MB_OK) return IDOK;
  return (flags & buttonBits) == MB_YESNO ? IDNO : IDCANCEL;
}

}  // namespace

int MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags) {
  auto* toolkit = TheToolkit();
  return toolkit ? toolkit->MessageBoxA(text, title, flags) : AnswerUnseen(text, flags);
}

bool GetOpenFileNameA(OPENFILENAME& dialog) {
  auto* toolkit = TheToolkit();
  return toolkit && toolkit->GetOpenFileNameA(dialog);
}

WindowHandle GetActiveWindow() {
  auto* toolkit = LoadedToolkit();
  return toolkit ? toolkit->GetActiveWindow() : 0;
}

WindowHandle CreateWindowExA(std::uint32_t, const std::string& windowClass, std::uint32_t style, int, int, int, int,
                             WindowHandle, std::uint32_t) {
  auto* toolkit = windowClass == "tooltips_class32" ? TheToolkit() : nullptr;
  return toolkit ? toolkit->NewTip(style) : 0;
}

bool DestroyWindow(WindowHandle window) {
  auto* toolkit = LoadedToolkit();
  return toolkit && toolkit->EndTip(window);
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t, const TOOLINFO& tool) {
  auto* toolkit = LoadedToolkit();
  if (toolkit && (message == TTM_ADDTOOLA || message == TTM_UPDATETIPTEXTA)) toolkit->TellTip(window, message, tool);
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam, const std::string& text) {
  auto* toolkit = LoadedToolkit();
  if (toolkit && message == TTM_SETTITLEA) toolkit->TellTip(window, wParam, text);
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam) {
  auto* toolkit = LoadedToolkit();
  const bool color = message == TTM_SETTIPBKCOLOR || message == TTM_SETTIPTEXTCOLOR;
  if (toolkit && color) toolkit->TellTip(window, message, wParam);
}

}  // namespace platform
