#include "platform/windows/peers/ContainerPeer.h"

namespace windows {
namespace {

ATOM RegisterPanelClass(const wchar_t* name) {
  WNDCLASSEXW panel{};
  panel.cbSize = sizeof panel;
  panel.lpfnWndProc = &::DefWindowProcW;
  panel.hInstance = Instance();
  panel.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  panel.lpszClassName = name;
  return ::RegisterClassExW(&panel);
}

const wchar_t* PanelClass() {
  static constexpr const wchar_t* name = L"Velmaro.Panel";
  static const auto registered = RegisterPanelClass(name);
  return registered ? name : nullptr;
}

}  // namespace

ContainerPeer::ContainerPeer(velmaro::PictureBox& box)
    : ControlPeer(box,
                  {.windowClass = PanelClass(),
                   .style = WS_CLIPCHILDREN,
                   .extendedStyle = static_cast<DWORD>(WS_EX_CONTROLPARENT | (box.Border() ? WS_EX_STATICEDGE : 0)),
                   .clicksByRelease = true}),
      container_(box) {}

ContainerPeer::ContainerPeer(velmaro::Frame& frame)
    : ControlPeer(
          frame,
          {.windowClass = L"BUTTON", .style = WS_CLIPCHILDREN | BS_GROUPBOX, .extendedStyle = WS_EX_CONTROLPARENT}),
      container_(frame) {}

LRESULT ContainerPeer::Handle(const Message& message) {
  if (const auto reflected = Reflect(message)) return *reflected;
  if (message.id != WM_ERASEBKGND) return ControlPeer::Handle(message);
  RECT client;
  ::GetClientRect(Window(), &client);
  ::FillRect(reinterpret_cast<HDC>(message.wParam), &client, Form().BrushFor(container_.BackColor()));
  return TRUE;
}

}  // namespace windows
