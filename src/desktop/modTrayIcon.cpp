#include "desktop/modTrayIcon.h"

#include "platform/user32.h"
#include "runtime/Form.h"
#include "runtime/Menu.h"

namespace velmaro {

void ShowPopupAtCursor(Form& form, Menu& menu, Menu* defaultEntry, float X, float Y) {
  platform::SetForegroundWindow(form.hWnd());
  Resume([&] {
    if (defaultEntry)
      form.PopupMenu(menu, {}, defaultEntry);
    else if (X + Y > 0)
      form.PopupMenu(menu, Bounds{X, Y});
    else
      form.PopupMenu(menu);
  });
}

}  // namespace velmaro
