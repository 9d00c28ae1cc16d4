#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "platform/machine.h"
#include "platform/simulated/Desktop.h"
#include "platform/simulated/peers/FormWindow.h"
#include "platform/user32.h"
#include "runtime/Control.h"

using simulated::TheDesktop;

namespace platform {
namespace {

// The flag that leaves a window's place in the stack alone.
constexpr std::uint32_t keepOrder = 4;

void Place(simulated::Window& window, std::int32_t insertAfter, std::uint32_t flags) {
  if (!(flags & keepOrder) && insertAfter == HWND_TOPMOST) window.topmost = true;
  if (!(flags & keepOrder) && insertAfter == HWND_NOTOPMOST) window.topmost = false;
  if (flags & SWP_SHOWWINDOW) window.visible = true;
  if (flags & SWP_HIDEWINDOW) window.visible = false;
}

simulated::FormWindow* OwnForm(WindowHandle handle) {
  const auto& forms = TheDesktop().forms;
  const auto at = std::ranges::find(forms, handle, &simulated::FormWindow::hWnd);
  return at == forms.end() ? nullptr : *at;
}

}  // namespace

WindowHandle FindWindowA(const std::string& title) {
  for (const auto* window : TheDesktop().StackedWindows())
    if (LowerCase(window->title) == LowerCase(title)) return window->handle;
  return 0;
}

bool ShowWindow(WindowHandle handle, int showCommand) {
  auto* window = TheDesktop().FindWindow(handle);
  if (!window) return false;
  const bool before = std::exchange(window->visible, showCommand != SW_HIDE);
  TheDesktop().NoteActivation();
  return before;
}

WindowHandle GetActiveWindow() { return TheDesktop().ActiveWindow(); }

bool SetForegroundWindow(WindowHandle handle) {
  auto& desktop = TheDesktop();
  desktop.broughtToFront.push_back(handle);
  if (auto* form = OwnForm(handle)) {
    desktop.anotherProgramInFront = false;
    form->ToFront();
    return true;
  }
  const auto at = std::ranges::find(desktop.windows, handle, &simulated::Window::handle);
  if (at == desktop.windows.end()) return false;
  std::rotate(desktop.windows.begin(), at, at + 1);
  desktop.GoToAnotherProgram();
  return true;
}

bool EnumWindows(const std::function<bool(WindowHandle)>& callback) {
  for (const auto* window : TheDesktop().StackedWindows())
    if (!callback(window->handle)) return false;
  return true;
}

int GetWindowTextLengthA(WindowHandle handle) {
  const auto* window = TheDesktop().FindWindow(handle);
  return window ? static_cast<int>(window->title.size()) : 0;
}

int GetWindowTextA(WindowHandle handle, char* buffer, int size) {
  const auto* window = TheDesktop().FindWindow(handle);
  if (!window || size <= 0) return 0;
  const auto length = std::min(window->title.size(), static_cast<std::size_t>(size) - 1);
  std::memcpy(buffer, window->title.data(), length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}

bool SetWindowPos(WindowHandle handle, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags) {
  auto& desktop = TheDesktop();
  desktop.placings.push_back({handle, insertAfter, x, y, width, height, flags});
  if (const auto tip = desktop.tooltips.find(handle); tip != desktop.tooltips.end()) {
    tip->second.topmost = insertAfter == HWND_TOPMOST;
    return true;
  }
  auto* window = desktop.FindWindow(handle);
  if (!window || window->outOfReach) return false;
  Place(*window, insertAfter, flags);
  desktop.NoteActivation();
  return true;
}

bool GetClientRect(WindowHandle handle, PixelRect& rect) {
  const auto& controls = TheDesktop().controls;
  if (const auto* form = OwnForm(handle)) {
    rect = form->Client();
    return true;
  }
  const auto at = controls.find(handle);
  if (at == controls.end()) return false;
  const auto pixel = at->second->Owner().Peer()->TwipsPerPixel();
  rect = {0, 0, static_cast<std::int32_t>(std::lround(at->second->Width() / pixel)),
          static_cast<std::int32_t>(std::lround(at->second->Height() / pixel))};
  return true;
}

}  // namespace platform
