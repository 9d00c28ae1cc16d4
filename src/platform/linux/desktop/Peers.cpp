#include "runtime/Peers.h"

#include "platform/linux/desktop/Toolkit.h"
#include "runtime/Buttons.h"
#include "runtime/ComboBox.h"
#include "runtime/Form.h"
#include "runtime/HScrollBar.h"
#include "runtime/Label.h"
#include "runtime/ListBox.h"
#include "runtime/Pictures.h"
#include "runtime/TextBox.h"
#include "runtime/Timer.h"

namespace velmaro {
namespace {

// A form that can't be shown has no peer, and so has nothing on it.
template <class Model>
std::unique_ptr<Peer> Made(Model& model) {
  return model.Owner().Peer() ? onlinux::TheToolkit()->NewPeer(model) : nullptr;
}

}  // namespace

std::unique_ptr<FormPeer> MakePeer(Form& form) {
  auto* toolkit = onlinux::TheToolkit();
  return toolkit ? toolkit->NewPeer(form) : nullptr;
}
std::unique_ptr<Peer> MakePeer(ListBox& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(CommandButton& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(OptionButton& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(ComboBox& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(TextBox& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(Label& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(PictureBox& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(Frame& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(Image& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(Line& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(HScrollBar& control) { return Made(control); }
std::unique_ptr<Peer> MakePeer(Timer& timer) { return Made(timer); }

bool CanShowForms() { return onlinux::TheToolkit() != nullptr; }
void ExpectForms() { onlinux::ExpectToolkit(); }

bool ProcessNextEvent() {
  auto* toolkit = onlinux::LoadedToolkit();
  return toolkit && toolkit->ProcessNextEvent();
}

bool ProcessWaitingEvents() {
  if (auto* toolkit = onlinux::LoadedToolkit()) toolkit->ProcessWaitingEvents();
  return true;
}

}  // namespace velmaro
