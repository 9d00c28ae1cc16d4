#include "platform/linux/qt/QtToolkit.h"

#include <QDir>
#include <QEventLoop>
#include <algorithm>
#include <memory>
#include <utility>

#include "platform/linux/qt/ButtonPeers.h"
#include "platform/linux/qt/EditPeers.h"
#include "platform/linux/qt/FormWindow.h"
#include "platform/linux/qt/ListBoxPeer.h"
#include "platform/linux/qt/PanelPeers.h"
#include "platform/linux/qt/ScrollBarPeer.h"
#include "platform/linux/qt/TimerPeer.h"
#include "platform/linux/x11/XServer.h"

namespace onlinux {
namespace {

// Makes the peer of a control and brings it up to date.
template <class Native, class Model>
std::unique_ptr<velmaro::Peer> Made(Model& control) {
  auto peer = std::make_unique<Native>(control);
  peer->Begin();
  return peer;
}

// The X server comes first: only there can windows be pinned, and those of other programs be listed.
std::string PluginToUse() {
  if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return {};
  return TheXServer() ? "xcb" : "wayland";
}

bool IsInstalled(const std::string& plugin) {
  const auto name = QString::fromStdString("libq" + plugin + "*.so");
  return std::ranges::any_of(QCoreApplication::libraryPaths(), [&](const QString& folder) {
    return !QDir(folder + "/platforms").entryList({name}).isEmpty();
  });
}

}  // namespace

QtToolkit::QtToolkit(std::string plugin) : plugin_(std::move(plugin)), application_(count_, arguments_) {
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("velmaro");
  QApplication::setDesktopFileName("velmaro");
  application_.installEventFilter(&router_);
}

std::unique_ptr<velmaro::FormPeer> QtToolkit::NewPeer(velmaro::Form& form) {
  return std::make_unique<FormWindow>(form);
}
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::ListBox& control) { return Made<ListBoxPeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::CommandButton& control) {
  return Made<CommandButtonPeer>(control);
}
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::OptionButton& control) {
  return Made<OptionButtonPeer>(control);
}
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::ComboBox& control) { return Made<ComboBoxPeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::TextBox& control) {
  return control.MultiLine() ? Made<ManyLinesPeer>(control) : Made<SingleLinePeer>(control);
}
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::Label& control) { return Made<LabelPeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::PictureBox& control) {
  return Made<PictureBoxPeer>(control);
}
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::Frame& control) { return Made<FramePeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::Image& control) { return Made<ImagePeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::Line& control) { return Made<LinePeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::HScrollBar& control) { return Made<ScrollBarPeer>(control); }
std::unique_ptr<velmaro::Peer> QtToolkit::NewPeer(velmaro::Timer& timer) { return std::make_unique<TimerPeer>(timer); }

bool QtToolkit::ProcessNextEvent() {
  if (FormWindow::Count() == 0) return false;
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  return true;
}

void QtToolkit::ProcessWaitingEvents() { QCoreApplication::processEvents(); }

}  // namespace onlinux

extern "C" onlinux::Toolkit* VelmaroToolkit() {
  auto plugin = onlinux::PluginToUse();
  if (!plugin.empty() && !onlinux::IsInstalled(plugin)) return nullptr;
  // It is never taken down: at the program's end, what Qt made behind it would already be gone.
  static auto* const toolkit = std::make_unique<onlinux::QtToolkit>(std::move(plugin)).release();
  return toolkit;
}
