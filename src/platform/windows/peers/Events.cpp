#include "platform/windows/peers/FormWindow.h"
#include "runtime/Peers.h"

namespace velmaro {
namespace {

void Deliver(MSG& message) {
  if (auto* form = windows::FormWindow::Around(message.hwnd); form && form->Translate(message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

}  // namespace

bool ProcessNextEvent() {
  MSG message;
  if (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    Deliver(message);
    return true;
  }
  // The loops further out must see the end too.
  ::PostQuitMessage(0);
  return false;
}

bool ProcessWaitingEvents() {
  for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
    if (message.message != WM_QUIT) {
      Deliver(message);
      continue;
    }
    // The loops further out must see the end too.
    ::PostQuitMessage(static_cast<int>(message.wParam));
    return false;
  }
  return true;
}

}  // namespace velmaro
