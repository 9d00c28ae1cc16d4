#pragma once

#include <optional>

#include "platform/windows/peers/FormWindow.h"
#include "runtime/Control.h"

namespace windows {

// How the native window of a control is made.
struct ControlWindow {
  const wchar_t* windowClass = nullptr;
  DWORD style = 0;
  DWORD extendedStyle = 0;
  bool takesKeyboard = false;    // reached with Tab
  bool isField = false;          // its window's text is what the user edits
  bool clicksByRelease = false;  // a left button released over it is a click
  bool startsGroup = true;       // the arrow keys do not run on into it
  int roomBelow = 0;             // what the window needs below the control's place, in pixels at 96 dots an inch
};

// What the native sides of all controls have in common: the window with its place, text, font, colours and tip, and the
// mouse buttons released over it.
class ControlPeer : public velmaro::Peer {
 public:
  ControlPeer(velmaro::Control& control, const ControlWindow& window);
  ControlPeer(const ControlPeer&) = delete;
  ControlPeer& operator=(const ControlPeer&) = delete;

  void Apply(velmaro::Change what) override;
  platform::WindowHandle hWnd() const override { return platform::ToNumber(window_.get()); }

  // Takes on another resolution of the screen.
  virtual void Rescale();
  // What the control's parent is told about it: a WM_COMMAND, WM_NOTIFY, WM_HSCROLL or WM_CTLCOLOR message. Nothing
  // where the parent is to do as always.
  virtual std::optional<LRESULT> Notified(const Message& message);

 protected:
  // Answers a message of the control's own window.
  virtual LRESULT Handle(const Message& message);
  // What the window does by itself.
  LRESULT Default(const Message& message) const;

  HWND Window() const { return window_.get(); }
  FormWindow& Form() const { return form_; }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(window_.get(), message, wParam, lParam);
  }
  // The colour behind the control.
  velmaro::Color ContainerColor() const;
  // Sets the control's colours on a context and gives the brush of its back.
  LRESULT UseColors(HDC context, velmaro::Color back) const;
  void Redraw() const { ::InvalidateRect(window_.get(), nullptr, TRUE); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
  WindowArgs ArgsFor(const ControlWindow& window);
  OwnedWindow NewLabel(const ControlWindow& window) const;
  void Place();
  void Show() const;
  void Enable() const;
  void Released(int button, const Message& message);

  velmaro::Control& control_;
  FormWindow& form_;
  bool clicksByRelease_;
  int roomBelow_;
  bool pressed_ = false;
  PixelPlace place_;
  // The window's own procedure, called through: the system's way of subclassing costs far more a message.
  WNDPROC native_ = nullptr;
  OwnedWindow label_;
  OwnedWindow window_;
};

// The native side of a window inside a form, null for one that is no control of ours.
ControlPeer* PeerOf(HWND window);
// Hands a message that a parent was sent about one of its controls to that control.
std::optional<LRESULT> Reflect(const Message& message);

}  // namespace windows
