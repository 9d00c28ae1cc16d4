#include "platform/simulated/Desktop.h"
#include "platform/user32.h"

using simulated::TheDesktop;

namespace platform {
namespace {

// The window that a message goes to, null where there is none.
simulated::Tooltip* Find(WindowHandle window) {
  auto& tooltips = TheDesktop().tooltips;
  const auto at = tooltips.find(window);
  return at == tooltips.end() ? nullptr : &at->second;
}

}  // namespace

WindowHandle CreateWindowExA(std::uint32_t, const std::string& windowClass, std::uint32_t style, int, int, int, int,
                             WindowHandle owner, std::uint32_t) {
  auto& desktop = TheDesktop();
  if (windowClass != "tooltips_class32") return 0;
  const auto handle = desktop.NewHandle();
  desktop.tooltips[handle] = {.style = style, .owner = owner};
  return handle;
}

bool DestroyWindow(WindowHandle window) {
  auto& desktop = TheDesktop();
  if (desktop.tooltips.erase(window) != 0) return true;
  desktop.misuse.push_back("a window that does not live was destroyed");
  return false;
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t, const TOOLINFO& tool) {
  auto* tip = Find(window);
  if (!tip || tool.cbSize != 44) return;
  if (message == TTM_ADDTOOLA) tip->tool = tool;
  if (message == TTM_UPDATETIPTEXTA && tip->tool) tip->tool->lpszText = tool.lpszText;
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam, const std::string& text) {
  auto* tip = Find(window);
  if (!tip || message != TTM_SETTITLEA) return;
  tip->icon = wParam;
  tip->title = text;
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam) {
  auto* tip = Find(window);
  if (!tip) return;
  if (message == TTM_SETTIPBKCOLOR) tip->backColor = wParam;
  if (message == TTM_SETTIPTEXTCOLOR) tip->textColor = wParam;
}

}  // namespace platform
