#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/simulated/Desktop.h"
#include "platform/simulated/peers/Living.h"
#include "runtime/Form.h"
#include "runtime/Menu.h"
#include "runtime/Peers.h"

namespace simulated {

// The native side of a form: a window that stands among those of the desktop. Its size is whole pixels.
class FormWindow final : public velmaro::FormPeer {
 public:
  explicit FormWindow(velmaro::Form& form);
  ~FormWindow() override;

  void Apply(velmaro::Change what) override;
  platform::WindowHandle hWnd() const override { return window.handle; }
  void Show(velmaro::Form* owner) override;
  void Hide(velmaro::Form* next) override;
  void Block(bool blocked) override;
  void ApplyMenu(velmaro::Menu& menu) override { menus_[&menu] = {menu.Checked(), menu.Visible()}; }
  void PopupMenu(velmaro::Menu& menu, std::optional<velmaro::Bounds> place, velmaro::Menu* defaultEntry) override;
  velmaro::Twips TwipsPerPixel() const override { return twipsPerPixel_; }

  bool Blocked() const { return blocked_; }
  // True while the window is on the screen, not minimized and not blocked.
  bool TakesInput() const;
  // True where the window and its menus show what the form holds.
  bool IsUpToDate() const;
  // Puts the window in front of the others and makes it active.
  void ToFront();
  // Gives the window another outer size, in twips, and tells the form; the size it has changes nothing.
  void SizeTo(velmaro::Twips width, velmaro::Twips height);
  // The same, and holds the window at that size, whatever the form does.
  void ImposeSize(velmaro::Twips width, velmaro::Twips height);
  // Minimizes, maximizes or restores the window and tells the form.
  void SetState(velmaro::WindowState state);
  // The inner rectangle in pixels.
  platform::PixelRect Client() const;

  velmaro::Form& form;
  Window window;
  velmaro::Form* owner = nullptr;
  velmaro::Control* focus = nullptr;  // the control that has the keyboard, null for none
  bool underOthers = false;           // another program's window lies between this one and the front

 private:
  struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
  };
  int Pixels(velmaro::Twips length) const;
  Size Frame() const;
  Size Outer() const;
  void Report();
  void AddMenus(const std::vector<velmaro::Menu*>& menus);

  Desktop& desktop_ = TheDesktop();
  Living living_;
  velmaro::Twips twipsPerPixel_ = desktop_.twipsPerPixel;
  Size normal_;
  bool held_ = false;
  bool inVain_ = false;  // the form asked for another size since
  velmaro::WindowState state_ = velmaro::WindowState::Normal;
  std::map<const velmaro::Menu*, std::pair<bool, bool>> menus_;  // checked, visible
  bool blocked_ = false;
  bool reported_ = false;
};

// The window of a form, null while it has none.
FormWindow* WindowFor(const velmaro::Form& form);

// True where an entry can be chosen in the opened menu `top`: it is visible with all that lies between, and a choice.
bool CanChoose(const velmaro::Menu& entry, const velmaro::Menu& top);

}  // namespace simulated
