#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/types.h"
#include "runtime/Failures.h"
#include "runtime/Peers.h"
#include "runtime/Types.h"

namespace velmaro {

class Control;
class Form;

// Where a control stands: on a form itself, or inside a picture box or frame of it.
struct Container {
  Container(Form& onForm) : form(onForm) {}
  Container(Control& inside);
  Form& form;
  Control* control = nullptr;
};

// What every control can be told when it is made.
struct ControlArgs {
  std::string Caption = {};
  Bounds At = {};
  int TabIndex = -1;
  bool Visible = true;
  bool Enabled = true;
  velmaro::Font Font = {};
  Color BackColor = SystemColor::ButtonFace;
  Color ForeColor = SystemColor::ButtonText;
  std::string ToolTipText = {};
  velmaro::Picture Picture = velmaro::Picture::None;
  std::string AccessibleName = {};  // what a screen reader calls a control whose caption does not tell
};

// What all controls have in common. The model is the truth: a property that is set can be read back at once, whether
// the form has peers or not. Positions are in twips of the container.
class Control {
 public:
  Control(Container container, ControlArgs args);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  // The mouse: a button released over the control. X and Y are in twips of the control.
  std::function<void(int Button, int Shift, float X, float Y)> MouseUp;
  // The control was clicked, or pressed with a key.
  std::function<void()> Click;

  // The form that the control belongs to.
  Form& Owner() const { return form_; }
  // The picture box or frame around the control, null on the form itself.
  Control* Parent() const { return parent_; }
  const Bounds& At() const { return args_.At; }
  Twips Left() const { return args_.At.Left; }
  Twips Top() const { return args_.At.Top; }
  Twips Width() const { return args_.At.Width; }
  Twips Height() const { return args_.At.Height; }
  const std::string& Caption() const { return args_.Caption; }
  int TabIndex() const { return args_.TabIndex; }
  bool Visible() const { return args_.Visible; }
  bool Enabled() const { return args_.Enabled; }
  const velmaro::Font& Font() const { return args_.Font; }
  Color BackColor() const { return args_.BackColor; }
  Color ForeColor() const { return args_.ForeColor; }
  const std::string& ToolTipText() const { return args_.ToolTipText; }
  velmaro::Picture Picture() const { return args_.Picture; }
  // The name for a screen reader, empty where the caption is the name.
  const std::string& AccessibleName() const { return args_.AccessibleName; }

  // Places the control. Throws RuntimeError for a negative size, and then nothing moves.
  void Move(const Bounds& at);
  // Moves the upper left corner and keeps the size.
  void MoveTo(Twips left, Twips top) { Move({left, top, Width(), Height()}); }
  void SetLeft(Twips left) { Move({left, Top(), Width(), Height()}); }
  void SetTop(Twips top) { Move({Left(), top, Width(), Height()}); }
  void SetWidth(Twips width) { Move({Left(), Top(), width, Height()}); }
  void SetHeight(Twips height) { Move({Left(), Top(), Width(), height}); }
  void SetCaption(std::string caption) { Set(args_.Caption, std::move(caption), Change::Caption); }
  void SetVisible(bool visible) { Set(args_.Visible, visible, Change::Visible); }
  void SetEnabled(bool enabled) { Set(args_.Enabled, enabled, Change::Enabled); }
  void SetToolTipText(std::string text) { Set(args_.ToolTipText, std::move(text), Change::ToolTip); }

  // The native window, 0 while the form has no peers.
  platform::WindowHandle hWnd() const { return peer_ ? peer_->hWnd() : 0; }
  // The native side, null while the form has none.
  velmaro::Peer* Peer() const { return peer_.get(); }

  // For the form: makes and drops the native side.
  void CreatePeer() { peer_ = NewPeer(); }
  void DropPeer() { peer_.reset(); }
  // For peers: raises an event of the control, if it is enabled and the event is bound.
  void RaiseClick();
  void RaiseMouseUp(int button, int shift, float x, float y);

 protected:
  // Makes the peer of the control's own kind.
  virtual std::unique_ptr<velmaro::Peer> NewPeer() = 0;
  // Lets the peer, if there is one, bring what the user sees into the model.
  void ReadPeer() const {
    if (peer_) peer_->Read();
  }
  // Tells the peer, if there is one, what changed.
  void Tell(Change what) {
    if (peer_) peer_->Apply(what);
  }
  // Stores a property and tells the peer where it is a change.
  template <class T>
  void Set(T& field, T value, Change what) {
    if (field == value) return;
    field = std::move(value);
    Tell(what);
  }

 private:
  Form& form_;
  Control* parent_;
  ControlArgs args_;
  std::unique_ptr<velmaro::Peer> peer_;
};

}  // namespace velmaro
