#include "platform/linux/qt/QtToolkit.h"

#include <unistd.h>

#include <QAccessible>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QSessionManager>
#include <QSocketNotifier>
#include <algorithm>
#include <memory>
#include <utility>

#include "platform/linux/ground/Say.h"
#include "platform/linux/qt/Accessible.h"
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

QStringList PluginFolders() {
  auto folders = QCoreApplication::libraryPaths();
  for (auto& folder : folders) folder += "/platforms";
  return folders << qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH");
}

bool HasPlugin(const QString& way) {
  const auto name = "libq" + way.section(':', 0, 0).toLower() + "*.so";
  return std::ranges::any_of(PluginFolders(), [&](const QString& folder) {
    return !folder.isEmpty() && !QDir(folder).entryList({name}).isEmpty();
  });
}

// Of the ways to show windows those that Qt has a plugin for. It ends the whole program where it finds none, or where
// the first of them leads nowhere.
std::string Installed(const char* ways) {
  QStringList installed;
  for (const auto& way : QString::fromUtf8(ways).split(';', Qt::SkipEmptyParts)) {
    const bool isFirstX = installed.isEmpty() && way.startsWith("xcb", Qt::CaseInsensitive);
    if (HasPlugin(way) && (!isFirstX || TheXServer())) installed << way;
  }
  return installed.join(';').toStdString();
}

// Keeps a folder out of those in which Qt looks for plugins. It puts the program's own among them when it starts, and
// takes away again only what its user had named before. No other thread may read the environment meanwhile. False where
// the folder can't be named.
bool Shun(const QByteArray& folder) {
  constexpr auto* name = "QT_PLUGIN_PATH";
  const bool isSet = qEnvironmentVariableIsSet(name);
  const auto before = qgetenv(name);
  qputenv(name, folder + ':' + before);
  const bool isNamed = QCoreApplication::libraryPaths().contains(QFile::decodeName(folder));
  isSet ? qputenv(name, before) : qunsetenv(name);
  QCoreApplication::removeLibraryPath(QFile::decodeName(folder));
  return isNamed;
}

// What Qt has to say goes where the program's own complaints go, and what it takes for fatal is an end, no crash.
void Tell(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  Say(text.toStdString());
  if (type == QtFatalMsg) ::_exit(1);
}

}  // namespace

QtToolkit::QtToolkit(std::string plugins) : plugins_(std::move(plugins)), application_(count_, arguments_) {
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("velmaro");
  QApplication::setDesktopFileName("velmaro");
  application_.installEventFilter(&router_);
  // The next session would begin it with words of its own, which a command line takes for a program to start.
  const auto comeBackNever = [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); };
  QObject::connect(&application_, &QGuiApplication::commitDataRequest, comeBackNever);
  QObject::connect(&application_, &QGuiApplication::saveStateRequest, comeBackNever);
  QAccessible::installFactory(NewAccessible);
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

void QtToolkit::WaitFor(int descriptor) {
  QEventLoop loop;
  const QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace onlinux

extern "C" onlinux::Toolkit* VelmaroToolkit(const char* ways, const char* shunned) {
  if (*shunned && !onlinux::Shun(shunned)) return nullptr;
  auto plugins = onlinux::Installed(ways);
  if (plugins.empty()) return nullptr;
  qInstallMessageHandler(onlinux::Tell);
  // It is never taken down: at the program's end, what Qt made behind it would already be gone.
  static auto* const toolkit = std::make_unique<onlinux::QtToolkit>(std::move(plugins)).release();
  return QGuiApplication::primaryScreen() ? toolkit : nullptr;
}
