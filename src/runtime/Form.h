#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/types.h"
#include "runtime/Failures.h"
#include "runtime/Peers.h"
#include "runtime/Types.h"

namespace velmaro {

class CommandButton;
class Control;
class Menu;
class Timer;

enum class BorderStyle { None, FixedSingle, Sizable, FixedToolWindow };
enum class StartUpPosition { Manual = 0, CenterOwner = 1, CenterScreen = 2 };
enum class WindowState { Normal, Minimized, Maximized };

// How a form is made. The client area is in twips and does not count the menu bar.
struct FormArgs {
  std::string Caption = {};
  Twips ClientWidth = 0;
  Twips ClientHeight = 0;
  Twips MinWidth = 0;  // the outer size that the user's mouse stops at
  Twips MinHeight = 0;
  velmaro::BorderStyle BorderStyle = velmaro::BorderStyle::Sizable;
  bool MinButton = true;
  bool MaxButton = true;
  bool ShowInTaskbar = true;
  velmaro::StartUpPosition StartUpPosition = velmaro::StartUpPosition::CenterOwner;
  bool KeyPreview = false;
  velmaro::Picture Icon = velmaro::Picture::None;
  Color BackColor = SystemColor::ButtonFace;
};

// A window with its controls, menus and timers. It is loaded by its first show, has peers from then on, and ends with
// its unload; a form that is never shown never has a native window.
class Form {
 public:
  explicit Form(FormArgs args);
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form();

  // The form was loaded and is not visible yet.
  std::function<void()> Load;
  // The window got its size, first when it is shown.
  std::function<void()> Resize;
  // The window became the active one of the program.
  std::function<void()> Activate;
  // A key was pressed or released in the window, told before the control that has the keyboard sees it (KeyPreview).
  std::function<void(int KeyCode, int Shift)> KeyDown;
  std::function<void(int KeyCode, int Shift)> KeyUp;
  // Files were dropped on the window, by their paths. A form without a handler takes none.
  std::function<void(const std::vector<std::string>& Files)> DropFiles;
  // The form is about to end; Cancel keeps it.
  std::function<void(bool& Cancel)> Unload;
  // The user's session is about to end, and the form with it; Cancel refuses.
  std::function<void(bool& Cancel)> QueryEndSession;

  // Loads the form where it is not, and shows it without waiting. A form whose window can't be made is unloaded.
  void Show();
  // Loads the form and makes its native window without showing it, for calls that need the window.
  void Realize();
  // Loads and shows the form above `owner`, lets the program's other forms take no input, and returns when the form is
  // hidden or unloaded.
  void ShowModal(Form* owner);
  // Takes the form off the screen. It stays loaded.
  void Hide();

  const std::string& Caption() const { return args_.Caption; }
  void SetCaption(std::string caption);
  const FormArgs& Args() const { return args_; }
  // The outer size of the window in twips, as it was last reported; the client area's size while there is none.
  Twips Width() const { return width_; }
  Twips Height() const { return height_; }
  // Set the outer size. Throw RuntimeError while the window is minimized or maximized.
  void SetWidth(Twips width);
  void SetHeight(Twips height);
  // The size of the client area in twips.
  Twips ScaleWidth() const { return scaleWidth_; }
  Twips ScaleHeight() const { return scaleHeight_; }
  // The smallest whole number of pixels that reaches a length, as twips: what a lower limit of the window's size
  // becomes.
  Twips UpToWholePixel(Twips length) const;
  velmaro::WindowState WindowState() const { return state_; }
  // True where the window has a size below the form's least one that the desktop imposes: to set another is in vain.
  bool SizeIsImposed() const { return imposed_; }
  bool Visible() const { return visible_; }
  bool Loaded() const { return loaded_; }
  // True once the form has been unloaded. It is not shown again; a new instance takes its place.
  bool Unloaded() const { return unloaded_; }

  // The native window, 0 while there is none.
  platform::WindowHandle hWnd() const { return peer_ ? peer_->hWnd() : 0; }
  // Opens the entries of a menu as a popup at a place of the client area in twips, or at the mouse pointer.
  void PopupMenu(Menu& menu, std::optional<Bounds> place = {}, Menu* defaultEntry = nullptr);

  // The parts of the form, in the order in which they were made.
  const std::vector<Control*>& Controls() const { return controls_; }
  const std::vector<Menu*>& MenuBar() const { return menus_; }
  // The buttons that Enter and Esc press, null for none that is visible and enabled.
  CommandButton* DefaultButton() const;
  CommandButton* CancelButton() const;
  // The native side, null while there is none.
  FormPeer* Peer() const { return peer_.get(); }

  // For the application, once no event of the form can be running: ends the native side.
  void DropPeers();
  // For peers: the window got another size, in twips, or its size is imposed. Raises Resize.
  void ResizedTo(Twips width, Twips height, Twips scaleWidth, Twips scaleHeight, velmaro::WindowState state,
                 bool imposed = false);
  // For peers: the user asks to close the window.
  void CloseByUser();
  // For peers: true where the form lets the user's session end.
  bool MayEndSession();
  // For peers: raise the events.
  void RaiseActivate();
  void RaiseKeyDown(int keyCode, int shift);
  void RaiseKeyUp(int keyCode, int shift);
  void RaiseDropFiles(const std::vector<std::string>& files);

  // For the parts: they belong to the form from their making to their end.
  void Add(Control& control) { controls_.push_back(&control); }
  void Add(Menu& menu) { menus_.push_back(&menu); }
  void Add(Timer& timer) { timers_.push_back(&timer); }
  void Remove(Control& control) { std::erase(controls_, &control); }
  void Remove(Timer& timer) { std::erase(timers_, &timer); }

 private:
  friend void LoadForm(Form& form);
  friend void UnloadForm(Form& form);
  void Appear(Form* owner);
  void CreatePeers();
  void Retire();
  void SetSize(Twips width, Twips height);
  void Block(bool on);
  void Unblock();
  Form* Next() const;

  FormArgs args_;
  std::vector<Control*> controls_;
  std::vector<Menu*> menus_;
  std::vector<Timer*> timers_;
  std::unique_ptr<FormPeer> peer_;
  Form* owner_ = nullptr;
  Twips width_;
  Twips height_;
  Twips scaleWidth_;
  Twips scaleHeight_;
  velmaro::WindowState state_ = velmaro::WindowState::Normal;
  bool imposed_ = false;
  bool visible_ = false;
  bool loaded_ = false;
  bool unloaded_ = false;
  bool unloading_ = false;
  int blocks_ = 0;
  std::function<void()> unblock_;
};

// Loads a form that is not loaded: raises Load and makes it one of the program's forms.
void LoadForm(Form& form);
// Unloads a loaded form, unless its Unload event refuses: its window goes, and it is none of the program's forms.
void UnloadForm(Form& form);

}  // namespace velmaro
