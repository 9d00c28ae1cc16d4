#include <algorithm>
#include <cstring>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/operations/Titles.h"

namespace platform {
namespace {

// Titles go out a character at a time so that a buffer never ends in half a one.
std::size_t WholeCharacters(std::string_view text, std::size_t room) {
  std::size_t length = 0;
  while (length < text.size()) {
    const auto next = length + CharacterLength(text.substr(length));
    if (next > room) break;
    length = next;
  }
  return length;
}

// A window of another program may hang. It is asked for what it is to do, and not waited for.
bool IsOwn(HWND window) { return ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId(); }

}  // namespace

WindowHandle FindWindowA(const std::string& title) { return ToNumber(::FindWindowW(nullptr, Widen(title).c_str())); }

bool ShowWindow(WindowHandle window, int showCommand) {
  const auto native = ToNative<HWND>(window);
  return IsOwn(native) ? ::ShowWindow(native, showCommand) : ::ShowWindowAsync(native, showCommand);
}

WindowHandle GetActiveWindow() { return ToNumber(::GetActiveWindow()); }

bool SetForegroundWindow(WindowHandle window) { return ::SetForegroundWindow(ToNative<HWND>(window)); }

bool EnumWindows(const std::function<bool(WindowHandle)>& callback) {
  for (const auto window : TopLevelWindows())
    if (!callback(ToNumber(window))) return false;
  return true;
}

int GetWindowTextLengthA(WindowHandle window) {
  return static_cast<int>(Narrow(TitleOf(ToNative<HWND>(window))).size());
}

int GetWindowTextA(WindowHandle window, char* buffer, int size) {
  if (size < 1) return 0;
  const auto title = Narrow(TitleOf(ToNative<HWND>(window)));
  const auto length = WholeCharacters(title, static_cast<std::size_t>(size - 1));
  std::memcpy(buffer, title.data(), length);
  buffer[length] = 0;
  return static_cast<int>(length);
}

bool SetWindowPos(WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags) {
  const auto after = reinterpret_cast<HWND>(static_cast<std::intptr_t>(insertAfter));
  const auto native = ToNative<HWND>(window);
  return ::SetWindowPos(native, after, x, y, width, height, IsOwn(native) ? flags : flags | SWP_ASYNCWINDOWPOS);
}

bool GetClientRect(WindowHandle window, PixelRect& rect) {
  RECT client{};
  if (!::GetClientRect(ToNative<HWND>(window), &client)) return false;
  rect = {client.left, client.top, client.right, client.bottom};
  return true;
}

bool DestroyWindow(WindowHandle window) { return ::DestroyWindow(ToNative<HWND>(window)); }

}  // namespace platform
