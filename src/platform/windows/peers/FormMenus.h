#pragma once

#include <vector>

#include "platform/windows/ground/Handles.h"
#include "runtime/Menu.h"

namespace windows {

// The native menus of a form: its bar, and a popup for each menu that has entries, whether it stands on the bar or not.
class FormMenus {
 public:
  explicit FormMenus(const std::vector<velmaro::Menu*>& bar);
  ~FormMenus();
  FormMenus(const FormMenus&) = delete;
  FormMenus& operator=(const FormMenus&) = delete;

  // The native bar, null for a form without menus.
  HMENU Bar() const { return bar_.get(); }
  // The native popup of a menu, null for one without entries.
  HMENU PopupOf(const velmaro::Menu& menu) const;
  // The menu that a command of the window chose, null for none.
  velmaro::Menu* Find(UINT id) const;
  // The command that chooses a menu, 0 for none.
  UINT IdOf(const velmaro::Menu* menu) const;
  // Shows a changed menu among those beside it.
  void Update(const velmaro::Menu& menu);

 private:
  struct Item {
    velmaro::Menu* menu;
    OwnedMenu popup;
  };
  void AddItem(velmaro::Menu& menu);
  void Fill(HMENU native, const std::vector<velmaro::Menu*>& entries) const;
  void Append(HMENU native, const velmaro::Menu& entry) const;

  const std::vector<velmaro::Menu*>& top_;
  std::vector<Item> items_;
  OwnedMenu bar_;
};

}  // namespace windows
