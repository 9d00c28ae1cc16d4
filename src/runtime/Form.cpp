#include "runtime/Form.h"

#include <algorithm>
#include <cmath>

#include "runtime/Application.h"
#include "runtime/Buttons.h"
#include "runtime/Control.h"
#include "runtime/Menu.h"
#include "runtime/Timer.h"

namespace velmaro {
namespace {

int Depth(const Control& control) { return control.Parent() ? Depth(*control.Parent()) + 1 : 0; }

// Containers before what they hold, and the rest in tab order.
std::vector<Control*> InPeerOrder(std::vector<Control*> controls) {
  std::ranges::stable_sort(controls, [](const Control* a, const Control* b) {
    const auto depthA = Depth(*a);
    const auto depthB = Depth(*b);
    return depthA != depthB ? depthA < depthB : a->TabIndex() < b->TabIndex();
  });
  return controls;
}

template <class Wanted>
CommandButton* FindButton(const std::vector<Control*>& controls, Wanted wanted) {
  for (auto* control : controls)
    if (auto* button = dynamic_cast<CommandButton*>(control);
        button && wanted(*button) && button->Visible() && button->Enabled())
      return button;
  return nullptr;
}

}  // namespace

Form::Form(FormArgs args)
    : args_(std::move(args)),
      width_(args_.ClientWidth),
      height_(args_.ClientHeight),
      scaleWidth_(args_.ClientWidth),
      scaleHeight_(args_.ClientHeight) {}

Form::~Form() {
  App().Remove(*this);
  peer_.reset();
}

void Form::Realize() {
  LoadForm(*this);
  if (peer_ || unloaded_ || App().Ended()) return;
  bool made = false;
  Resume([&] {
    CreatePeers();
    made = peer_ != nullptr;
  });
  if (made) return;
  // A form that nobody sees is none of the program's: nobody could close it.
  DropPeers();
  Retire();
}

// The native window only hides for now: the event that unloads a form may be one of its own.
void Form::Retire() {
  loaded_ = false;
  unloaded_ = true;
  Hide();
  App().Remove(*this);
}

void Form::Appear(Form* owner) {
  Realize();
  if (!peer_ || unloaded_) return;
  // A form that shows already comes to the front.
  visible_ = true;
  App().CameToFront(*this);
  owner_ = owner;
  peer_->Show(owner);
}

void Form::Show() { Appear(nullptr); }

void Form::ShowModal(Form* owner) {
  std::vector<Form*> blocked;
  for (auto* form : App().Forms())
    if (form != this && form->Visible() && form->Peer()) blocked.push_back(form);
  const auto block = [&](bool on) {
    for (auto* form : blocked)
      if (std::ranges::count(App().Forms(), form) != 0) form->Block(on);
  };
  // The owner takes input again before this window goes, or another program's window would come to the front.
  unblock_ = [block] { block(false); };
  block(true);
  Appear(owner);
  App().RunWhile([this] { return visible_; });
  if (visible_) Hide();
  Unblock();
}

// Modal forms may stand on one another: a form takes input again when the last one above it has gone.
void Form::Block(bool on) {
  blocks_ += on ? 1 : -1;
  if (peer_) peer_->Block(blocks_ > 0);
}

void Form::Unblock() {
  if (const auto unblock = std::exchange(unblock_, nullptr)) unblock();
}

void Form::Hide() {
  if (!visible_) return;
  visible_ = false;
  Unblock();
  if (peer_) peer_->Hide(Next());
}

// The form that takes over from this one: its owner, where that can be seen and takes input.
Form* Form::Next() const {
  if (std::ranges::count(App().Forms(), owner_) == 0) return nullptr;
  return owner_->Visible() && owner_->blocks_ <= 0 ? owner_ : nullptr;
}

void Form::CreatePeers() {
  peer_ = MakePeer(*this);
  for (auto* control : InPeerOrder(controls_)) control->CreatePeer();
  for (auto* timer : timers_) timer->CreatePeer();
}

void Form::DropPeers() {
  for (auto* timer : timers_) timer->DropPeer();
  for (auto* control : controls_) control->DropPeer();
  peer_.reset();
}

void Form::SetCaption(std::string caption) {
  if (caption == args_.Caption) return;
  args_.Caption = std::move(caption);
  if (peer_) peer_->Apply(Change::Caption);
}

void Form::SetSize(Twips width, Twips height) {
  if (state_ != velmaro::WindowState::Normal) throw RuntimeError("the window has no size of its own now");
  width_ = width;
  height_ = height;
  if (peer_) peer_->Apply(Change::Bounds);
}

void Form::SetWidth(Twips width) { SetSize(width, height_); }

void Form::SetHeight(Twips height) { SetSize(width_, height); }

Twips Form::UpToWholePixel(Twips length) const {
  const auto pixel = peer_ ? peer_->TwipsPerPixel() : Twips{1};
  // Lengths come back from whole pixels with a rounding error that must not cost one more.
  return std::ceil(length / pixel - 0.001F) * pixel;
}

void Form::PopupMenu(Menu& menu, std::optional<Bounds> place, Menu* defaultEntry) {
  if (!peer_) throw RuntimeError("a form that is not shown has no popup");
  peer_->PopupMenu(menu, place, defaultEntry);
}

CommandButton* Form::DefaultButton() const {
  return FindButton(controls_, [](const CommandButton& button) { return button.Default(); });
}

CommandButton* Form::CancelButton() const {
  return FindButton(controls_, [](const CommandButton& button) { return button.Cancel(); });
}

void Form::ResizedTo(Twips width, Twips height, Twips scaleWidth, Twips scaleHeight, velmaro::WindowState state,
                     bool imposed) {
  width_ = width;
  height_ = height;
  scaleWidth_ = scaleWidth;
  scaleHeight_ = scaleHeight;
  state_ = state;
  imposed_ = imposed;
  if (Resize) Resume(Resize);
}

void Form::CloseByUser() { UnloadForm(*this); }

bool Form::MayEndSession() {
  // Where the user is being asked about the form already, there is no answer yet.
  if (std::exchange(unloading_, true)) return false;
  bool cancel = false;
  if (QueryEndSession && !unloaded_) Resume([&] { QueryEndSession(cancel); });
  unloading_ = false;
  return !cancel;
}

void Form::RaiseActivate() {
  App().CameToFront(*this);
  if (Activate) Resume(Activate);
}

void Form::RaiseKeyDown(int keyCode, int shift) {
  if (args_.KeyPreview && KeyDown) Resume([&] { KeyDown(keyCode, shift); });
}

void Form::RaiseKeyUp(int keyCode, int shift) {
  if (args_.KeyPreview && KeyUp) Resume([&] { KeyUp(keyCode, shift); });
}

void Form::RaiseDropFiles(const std::vector<std::string>& files) {
  if (DropFiles && !files.empty() && !unloaded_) Resume([&] { DropFiles(files); });
}

void LoadForm(Form& form) {
  if (form.loaded_ || form.unloaded_) return;
  form.loaded_ = true;
  App().Add(form);
  if (form.Load) Resume(form.Load);
}

void UnloadForm(Form& form) {
  if (!form.loaded_ || form.unloading_) return;
  form.unloading_ = true;
  bool cancel = false;
  if (form.Unload) Resume([&] { form.Unload(cancel); });
  form.unloading_ = false;
  if (cancel || !form.loaded_) return;
  form.Retire();
}

}  // namespace velmaro
