#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/ground/OwnWindows.h"
#include "platform/linux/qt/FormMenus.h"
#include "platform/linux/qt/Look.h"
#include "runtime/Form.h"

class QAbstractButton;
class QKeyEvent;
class QSessionManager;
class QWindow;

namespace onlinux {

class FormWidget;

// The window of a form: its menu bar, and under it the client area that holds the controls.
class FormWindow : public velmaro::FormPeer, public OwnWindow {
 public:
  explicit FormWindow(velmaro::Form& form);
  ~FormWindow() override;

  // The window that holds a widget, null for one of no form's.
  static FormWindow* Of(const QWidget* widget);
  // How many forms have windows.
  static int Count();

  void Apply(velmaro::Change what) override;
  platform::WindowHandle hWnd() const override { return number_; }
  void Show(velmaro::Form* owner) override;
  void Hide(velmaro::Form* next) override;
  void Block(bool blocked) override { blocked_ = blocked; }
  void ApplyMenu(velmaro::Menu& menu) override;
  void PopupMenu(velmaro::Menu& menu, std::optional<velmaro::Bounds> place, velmaro::Menu* defaultEntry) override;
  velmaro::Twips TwipsPerPixel() const override { return scale_.TwipsPerPixel(); }

  platform::WindowHandle Number() const override { return number_; }
  platform::PixelRect Inside() const override;
  bool IsForm() const override { return true; }
  std::string Title() const override;
  bool Shows() const override;
  void ShowOrHide(bool show) override;
  void KeepAbove(bool above) override;
  void BringToFront() override;

  // For the controls' peers: what contains them, and what their lengths and fonts come to.
  QWidget& Client() { return *client_; }
  const Scale& Measures() const { return scale_; }
  // Raises the event in which a form opens a menu; one that would open at the pointer opens at this place of the
  // screen.
  template <class Event>
  void OpenMenuAt(QPoint place, Event raise) {
    menuPlace_ = place;
    raise();
    menuPlace_.reset();
  }
  // For the window itself: what the user and the desktop did.
  void Resized();
  void Arranged();
  void Configured();
  void Activated() { form_.RaiseActivate(); }
  void CloseAsked();
  void Dropped(const std::vector<std::string>& files);
  void Destroyed();
  // Tells the form of a key. True where the form had a use for it.
  bool HandleKey(const QKeyEvent& event);
  // The button that a key with Alt presses, before a menu of the same letter: null for none.
  QAbstractButton* ButtonWithAccessKey(const QKeyEvent& event) const;

 private:
  void EndSession(QSessionManager& session);
  void SizeTo(velmaro::Twips width, velmaro::Twips height);
  void PlaceFirst(const velmaro::Form* owner);
  void PlaceParts();
  void OrderTabs();
  QSize ClientSize() const;
  QSize LeastSize() const;
  QSize LeastTile() const;
  int BarHeight() const;
  bool HandlePress(int keyCode, int shift);
  bool PressAccessKey(const QKeyEvent& event);
  velmaro::CommandButton* ButtonFor(int keyCode) const;
  velmaro::Control* Focused() const;

  velmaro::Form& form_;
  Scale scale_;
  std::unique_ptr<FormWidget> widget_;
  QPointer<QWidget> client_;
  FormMenus menus_;
  platform::WindowHandle number_ = 0;
  std::optional<QPoint> menuPlace_;
  bool blocked_ = false;
  bool shownBefore_ = false;
  bool reporting_ = false;
  bool inVain_ = false;  // the window was pushed from a size below its least one, and has kept it
  QSize asked_;          // the window's size when it was first shown
  QSize pushedFrom_;
  QElapsedTimer sincePush_;
};

// True for a widget that is out of the user's reach while a modal window stands above it. Qt keeps mouse and keyboard
// from it, and lets assistive technologies press it.
bool IsUnderModal(const QWidget* widget);

// Gives the keyboard back to a window when one above it has gone. A window manager does that by itself.
void HandKeyboardTo(QWindow* window);

}  // namespace onlinux
