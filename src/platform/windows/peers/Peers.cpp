#include "runtime/Peers.h"

#include "platform/windows/peers/ComboBoxPeer.h"
#include "platform/windows/peers/CommandButtonPeer.h"
#include "platform/windows/peers/ContainerPeer.h"
#include "platform/windows/peers/FormWindow.h"
#include "platform/windows/peers/LabelPeer.h"
#include "platform/windows/peers/ListBoxPeer.h"
#include "platform/windows/peers/OptionButtonPeer.h"
#include "platform/windows/peers/PicturePeers.h"
#include "platform/windows/peers/ScrollBarPeer.h"
#include "platform/windows/peers/TextBoxPeer.h"
#include "platform/windows/peers/TimerPeer.h"

namespace velmaro {

std::unique_ptr<FormPeer> MakePeer(Form& form) { return std::make_unique<windows::FormWindow>(form); }
std::unique_ptr<Peer> MakePeer(ListBox& control) { return std::make_unique<windows::ListBoxPeer>(control); }
std::unique_ptr<Peer> MakePeer(CommandButton& control) { return std::make_unique<windows::CommandButtonPeer>(control); }
std::unique_ptr<Peer> MakePeer(OptionButton& control) { return std::make_unique<windows::OptionButtonPeer>(control); }
std::unique_ptr<Peer> MakePeer(ComboBox& control) { return std::make_unique<windows::ComboBoxPeer>(control); }
std::unique_ptr<Peer> MakePeer(TextBox& control) { return std::make_unique<windows::TextBoxPeer>(control); }
std::unique_ptr<Peer> MakePeer(Label& control) { return std::make_unique<windows::LabelPeer>(control); }
std::unique_ptr<Peer> MakePeer(PictureBox& control) { return std::make_unique<windows::ContainerPeer>(control); }
std::unique_ptr<Peer> MakePeer(Frame& control) { return std::make_unique<windows::ContainerPeer>(control); }
std::unique_ptr<Peer> MakePeer(Image& control) { return std::make_unique<windows::ImagePeer>(control); }
std::unique_ptr<Peer> MakePeer(Line& control) { return std::make_unique<windows::LinePeer>(control); }
std::unique_ptr<Peer> MakePeer(HScrollBar& control) { return std::make_unique<windows::ScrollBarPeer>(control); }
std::unique_ptr<Peer> MakePeer(Timer& timer) { return std::make_unique<windows::TimerPeer>(timer); }

bool CanShowForms() { return true; }
void ExpectForms() {}

}  // namespace velmaro
