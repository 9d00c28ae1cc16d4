#include "platform/windows/peers/FormWindow.h"
#include "platform/windows/peers/Keys.h"
#include "runtime/Buttons.h"

namespace windows {
namespace {

bool IsKeyDown(const MSG& message) { return message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN; }
bool IsKeyUp(const MSG& message) { return message.message == WM_KEYUP || message.message == WM_SYSKEYUP; }

// True while no other message was taken from the queue since.
bool IsLatest(const MSG& message) { return static_cast<DWORD>(::GetMessageTime()) == message.time; }

LRESULT DialogCode(MSG message) {
  return ::SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
}

velmaro::CommandButton* ButtonOf(const velmaro::Form& form, HWND window) {
  for (auto* control : form.Controls())
    if (platform::ToNative<HWND>(control->hWnd()) == window) return dynamic_cast<velmaro::CommandButton*>(control);
  return nullptr;
}

}  // namespace

bool FormWindow::Translate(MSG& message) {
  if (::IsWindowEnabled(window_.get())) {
    if (IsKeyDown(message) && KeyDown(message)) return true;
    if (IsKeyUp(message)) form_.RaiseKeyUp(static_cast<int>(message.wParam), ShiftState());
  }
  if (!IsLatest(message)) {
    // The event ran a box: whatever keys are down by now, they are none that this one was pressed with.
    ::DispatchMessageW(&message);
    return true;
  }
  return ::IsDialogMessageW(window_.get(), &message);
}

bool FormWindow::KeyDown(const MSG& message) {
  const int key = static_cast<int>(message.wParam);
  const int shift = ShiftState();
  form_.RaiseKeyDown(key, shift);
  if (auto* entry = velmaro::FindShortcut(form_, {key, shift})) {
    entry->RaiseClick();
    return true;
  }
  return PressedByKey(message);
}

// Enter presses the button that has the keyboard, else the default one, and Esc the cancel button, unless the control
// at hand wants the key for itself.
bool FormWindow::PressedByKey(const MSG& message) {
  const bool enter = message.wParam == VK_RETURN;
  if (message.message != WM_KEYDOWN || (!enter && message.wParam != VK_ESCAPE)) return false;
  if (DialogCode(message) & DLGC_WANTALLKEYS) return false;
  auto* button = enter ? ButtonOf(form_, message.hwnd) : form_.CancelButton();
  if (enter && !button) button = form_.DefaultButton();
  if (button) button->RaiseClick();
  return true;
}

}  // namespace windows
