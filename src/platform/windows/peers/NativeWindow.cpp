#include "platform/windows/peers/NativeWindow.h"

#include "platform/windows/ground/Codepage.h"
#include "runtime/Failures.h"

namespace windows {

OwnedWindow Create(const WindowArgs& args) {
  // For a child, the menu argument is its id.
  const auto menu = args.menu ? args.menu : reinterpret_cast<HMENU>(static_cast<std::intptr_t>(args.id));
  OwnedWindow window(::CreateWindowExW(
      args.extendedStyle, args.windowClass, platform::Widen(args.text, platform::Nul::Escaped).c_str(), args.style,
      args.place.x, args.place.y, args.place.width, args.place.height, args.parent, menu, Instance(), args.creation));
  if (!window) throw velmaro::RuntimeError("the system refused a window");
  return window;
}

HINSTANCE Instance() { return ::GetModuleHandleW(nullptr); }

std::string TextOf(HWND control) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
  const int length = ::GetWindowTextW(control, text.data(), static_cast<int>(text.size()));
  return platform::Narrow({text.data(), static_cast<std::size_t>(length)});
}

bool SetText(HWND window, const std::string& text) {
  const auto wide = platform::Widen(text, platform::Nul::Escaped);
  return ::SetWindowTextW(window, wide.c_str()) &&
         static_cast<std::size_t>(::GetWindowTextLengthW(window)) == wide.size();
}

}  // namespace windows
