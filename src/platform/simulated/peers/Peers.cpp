#include "runtime/Peers.h"

#include "platform/simulated/peers/ControlPeer.h"
#include "platform/simulated/peers/FormWindow.h"
#include "platform/simulated/peers/TimerPeer.h"
#include "runtime/Buttons.h"
#include "runtime/ComboBox.h"
#include "runtime/HScrollBar.h"
#include "runtime/Label.h"
#include "runtime/ListBox.h"
#include "runtime/Pictures.h"
#include "runtime/TextBox.h"

namespace velmaro {

using simulated::ControlPeer;

std::unique_ptr<FormPeer> MakePeer(Form& form) {
  if (simulated::TheDesktop().windowsFail) throw RuntimeError("there is nothing to show windows on");
  return std::make_unique<simulated::FormWindow>(form);
}
std::unique_ptr<Peer> MakePeer(ListBox& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(CommandButton& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(OptionButton& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(ComboBox& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(TextBox& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(Label& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(PictureBox& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(Frame& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(Image& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(Line& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(HScrollBar& control) { return std::make_unique<ControlPeer>(control); }
std::unique_ptr<Peer> MakePeer(Timer& timer) { return std::make_unique<simulated::TimerPeer>(timer); }

bool CanShowForms() { return true; }
void ExpectForms() {}

bool ProcessNextEvent() { return !simulated::TheDesktop().quits && simulated::TheDesktop().RunNext(); }

bool ProcessWaitingEvents() {
  simulated::TheDesktop().RunNext();
  return !simulated::TheDesktop().quits;
}

}  // namespace velmaro
