#include "runtime/Menu.h"

#include "runtime/Failures.h"
#include "runtime/Form.h"

namespace velmaro {
namespace {

Menu* FindIn(const std::vector<Menu*>& entries, Shortcut shortcut) {
  for (auto* entry : entries) {
    if (!entry->Visible()) continue;
    if (entry->Shortcut() == shortcut) return entry;
    if (auto* found = FindIn(entry->Entries(), shortcut)) return found;
  }
  return nullptr;
}

std::string KeyName(int keyCode) {
  if (keyCode == Key::Delete) return "Del";
  if (keyCode >= Key::F1 && keyCode < Key::F1 + 12) return "F" + std::to_string(keyCode - Key::F1 + 1);
  return std::string(1, static_cast<char>(keyCode));
}

}  // namespace

std::string ShortcutText(Shortcut shortcut) {
  if (shortcut.KeyCode == 0) return {};
  std::string text;
  if (shortcut.Shift & ShiftKey::Ctrl) text += "Ctrl+";
  if (shortcut.Shift & ShiftKey::Shift) text += "Shift+";
  return text + KeyName(shortcut.KeyCode);
}

Menu::Menu(Form& form, MenuArgs args) : form_(form), args_(std::move(args)) { form_.Add(*this); }

Menu::Menu(Menu& parent, MenuArgs args) : form_(parent.form_), parent_(&parent), args_(std::move(args)) {
  parent.entries_.push_back(this);
}

void Menu::Set(bool& field, bool value) {
  if (field == value) return;
  field = value;
  if (form_.Peer()) form_.Peer()->ApplyMenu(*this);
}

void Menu::RaiseClick() {
  if (Click && !form_.Unloaded()) Resume(Click);
}

Menu* FindShortcut(const Form& form, Shortcut shortcut) {
  return shortcut.KeyCode == 0 ? nullptr : FindIn(form.MenuBar(), shortcut);
}

}  // namespace velmaro
