#pragma once

#include <functional>
#include <string>
#include <vector>

#include "runtime/Types.h"

namespace velmaro {

class Form;

// A key, with modifiers, that chooses a menu entry. Code 0 stands for none.
struct Shortcut {
  int KeyCode = 0;
  int Shift = 0;
  bool operator==(const Shortcut&) const = default;
};

// The shortcut of Ctrl and a letter.
constexpr Shortcut CtrlKey(char letter) { return {letter, ShiftKey::Ctrl}; }

// The text that stands behind an entry for its shortcut: "Ctrl+R", "F5", "Del".
std::string ShortcutText(Shortcut shortcut);

// How a menu or entry is made.
struct MenuArgs {
  std::string Caption = {};  // "-" makes a separator
  velmaro::Shortcut Shortcut = {};
  bool Checked = false;
  bool Visible = true;
};

// A menu of a form's menu bar, or an entry of one. A shortcut belongs to its menu: while the menu is not visible, it is
// out of reach.
class Menu {
 public:
  Menu(Form& form, MenuArgs args);
  Menu(Menu& parent, MenuArgs args);
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;

  // The entry was chosen, from the bar, a popup or by its shortcut.
  std::function<void()> Click;

  Form& Owner() const { return form_; }
  // The menu that holds this entry, null for one on the bar.
  Menu* Parent() const { return parent_; }
  const std::vector<Menu*>& Entries() const { return entries_; }
  const std::string& Caption() const { return args_.Caption; }
  bool IsSeparator() const { return args_.Caption == "-"; }
  velmaro::Shortcut Shortcut() const { return args_.Shortcut; }
  bool Checked() const { return args_.Checked; }
  bool Visible() const { return args_.Visible; }
  void SetChecked(bool checked) { Set(args_.Checked, checked); }
  void SetVisible(bool visible) { Set(args_.Visible, visible); }

  // For peers: raises Click.
  void RaiseClick();

 private:
  void Set(bool& field, bool value);

  Form& form_;
  Menu* parent_ = nullptr;
  MenuArgs args_;
  std::vector<Menu*> entries_;
};

// The entry that a shortcut chooses on a form now, null for none.
Menu* FindShortcut(const Form& form, Shortcut shortcut);

}  // namespace velmaro
