#include "platform/windows/peers/OptionButtonPeer.h"

namespace windows {
namespace {

// The option made last in the same container, null where this is the first.
HWND OptionBefore(const velmaro::OptionButton& option) {
  const velmaro::Control* before = nullptr;
  for (const auto* control : option.Owner().Controls())
    if (dynamic_cast<const velmaro::OptionButton*>(control) && control->Parent() == option.Parent() &&
        control->Peer() && (!before || control->TabIndex() > before->TabIndex()))
      before = control;
  return before ? platform::ToNative<HWND>(before->hWnd()) : nullptr;
}

ControlWindow WindowFor(const velmaro::OptionButton& option) {
  return {.windowClass = L"BUTTON",
          .style = static_cast<DWORD>(BS_AUTORADIOBUTTON | (option.Graphical() ? BS_PUSHLIKE : 0)),
          .takesKeyboard = option.Value(),
          .startsGroup = !OptionBefore(option)};
}

}  // namespace

OptionButtonPeer::OptionButtonPeer(velmaro::OptionButton& option)
    : ControlPeer(option, WindowFor(option)), option_(option) {
  // Tab and arrow keys take a group to be the windows that follow each other.
  if (const auto before = OptionBefore(option); before && before != ::GetWindow(Window(), GW_HWNDPREV))
    ::SetWindowPos(Window(), before, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  if (option.Value()) Mark();
}

void OptionButtonPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Value)
    Mark();
  else
    ControlPeer::Apply(what);
}

std::optional<LRESULT> OptionButtonPeer::Notified(const Message& message) {
  if (message.id != WM_COMMAND) return ControlPeer::Notified(message);
  if (HIWORD(message.wParam) == BN_CLICKED) option_.SetValue(true);
  return 0;
}

}  // namespace windows
