#pragma once

#include <memory>
#include <optional>

#include "platform/types.h"
#include "runtime/Types.h"

namespace velmaro {

class ComboBox;
class CommandButton;
class Form;
class Frame;
class HScrollBar;
class Image;
class Label;
class Line;
class ListBox;
class Menu;
class OptionButton;
class PictureBox;
class TextBox;
class Timer;

// The native side of one control or timer. It is made for a form that is first shown, reads everything from its model
// at once, and ends with the form. What the user does is told to the model through the model's functions for peers.
class Peer {
 public:
  virtual ~Peer() = default;
  // Brings the native side up to date with what changed in the model. Throws RuntimeError where the platform refuses.
  virtual void Apply(Change what) = 0;
  // Tells the model what the native side shows by now, where that can change without an event.
  virtual void Read() {}
  // The native window, 0 for a peer that has none.
  virtual platform::WindowHandle hWnd() const { return 0; }
};

// The native side of a form.
class FormPeer : public Peer {
 public:
  // Shows the window, placed by the form's start-up position when it is shown first, above `owner` where there is one.
  virtual void Show(Form* owner) = 0;
  // Takes the window off the screen. Where it is the active one, `next` becomes active first, unless that is null: a
  // desktop left to itself brings up whatever window is under it, of any program.
  virtual void Hide(Form* next) = 0;
  // Lets the window take no input while a modal form stands above it, or lets it take input again.
  virtual void Block(bool blocked) = 0;
  // Shows a changed menu: its check mark, whether it can be chosen, whether it stands on the menu bar.
  virtual void ApplyMenu(Menu& menu) = 0;
  // Opens the entries of a menu as a popup and returns when it has closed and a chosen entry has been told. Without a
  // place, which is in twips of the client area, it opens at the mouse pointer.
  virtual void PopupMenu(Menu& menu, std::optional<Bounds> place, Menu* defaultEntry) = 0;
  // The length of one pixel in twips at the window's present resolution.
  virtual Twips TwipsPerPixel() const = 0;
};

// The makers of a platform's peers; each platform folder defines them all in its Peers.cpp. A control's peer is made
// behind those of its container and of the controls that come before it in tab order.
std::unique_ptr<FormPeer> MakePeer(Form& form);
std::unique_ptr<Peer> MakePeer(ListBox& control);
std::unique_ptr<Peer> MakePeer(CommandButton& control);
std::unique_ptr<Peer> MakePeer(OptionButton& control);
std::unique_ptr<Peer> MakePeer(ComboBox& control);
std::unique_ptr<Peer> MakePeer(TextBox& control);
std::unique_ptr<Peer> MakePeer(Label& control);
std::unique_ptr<Peer> MakePeer(PictureBox& control);
std::unique_ptr<Peer> MakePeer(Frame& control);
std::unique_ptr<Peer> MakePeer(Image& control);
std::unique_ptr<Peer> MakePeer(Line& control);
std::unique_ptr<Peer> MakePeer(HScrollBar& control);
std::unique_ptr<Peer> MakePeer(Timer& timer);

// False where no window can be shown at all, now or later.
bool CanShowForms();
// Tells that a form is about to show: what the platform needs for it may be loaded beside the program's other work.
void ExpectForms();
// Waits for the next event of the program, raises it and gives true; false when no event can come any more.
bool ProcessNextEvent();
// Raises every event that waits already, and returns without waiting for more; false when the program was told to end.
[[nodiscard]] bool ProcessWaitingEvents();

}  // namespace velmaro
