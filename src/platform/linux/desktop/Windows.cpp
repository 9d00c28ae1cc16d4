#include <string>

#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/Library.h"
#include "platform/linux/ground/OwnWindows.h"
#include "platform/linux/ground/Say.h"
#include "platform/machine.h"
#include "platform/user32.h"

namespace onlinux {
namespace {

const WindowCalls* Load() {
  std::string error;
  const auto entry = reinterpret_cast<const WindowCalls* (*)()>(LoadEntry(WindowCallsName, WindowCallsEntry, error));
  if (!entry) Say("no window can be found: " + error);
  return entry ? entry() : nullptr;
}

}  // namespace

const WindowCalls* TheWindowCalls() {
  static const auto* const calls = Load();
  return calls;
}

}  // namespace onlinux

// What the platform does with windows of all programs, through the library that reaches them.
namespace platform {

using onlinux::TheWindowCalls;

WindowHandle FindWindowA(const std::string& title) {
  const auto* calls = TheWindowCalls();
  return calls ? calls->FindWindowA(title) : 0;
}

bool ShowWindow(WindowHandle window, int showCommand) {
  const auto* calls = TheWindowCalls();
  return calls && calls->ShowWindow(window, showCommand);
}

bool SetForegroundWindow(WindowHandle window) {
  const auto* calls = TheWindowCalls();
  return calls && calls->SetForegroundWindow(window);
}

bool EnumWindows(const std::function<bool(WindowHandle)>& callback) {
  const auto* calls = TheWindowCalls();
  return calls && calls->EnumWindows(callback);
}

int GetWindowTextLengthA(WindowHandle window) {
  const auto* calls = TheWindowCalls();
  return calls ? calls->GetWindowTextLengthA(window) : 0;
}

int GetWindowTextA(WindowHandle window, char* buffer, int size) {
  const auto* calls = TheWindowCalls();
  return calls ? calls->GetWindowTextA(window, buffer, size) : 0;
}

bool SetWindowPos(WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags) {
  const auto* calls = TheWindowCalls();
  return calls && calls->SetWindowPos(window, insertAfter, x, y, width, height, flags);
}

bool GetClientRect(WindowHandle window, PixelRect& rect) {
  const auto* own = onlinux::FindOwn(window);
  if (own) rect = own->Inside();
  return own != nullptr;
}

bool AppActivate(const std::string& title) {
  const auto* calls = TheWindowCalls();
  return calls && calls->AppActivate(title);
}

bool SendKeys(const std::string& keys) {
  const auto* calls = TheWindowCalls();
  return calls && calls->SendKeys(keys);
}

}  // namespace platform
