#pragma once

#include <QApplication>
#include <map>
#include <string>

#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/qt/Balloon.h"
#include "platform/linux/qt/KeyRouter.h"

namespace onlinux {

// The toolkit on Qt. It is made with the first window or box and lives to the program's end.
class QtToolkit : public Toolkit {
 public:
  // Takes the names of the plugins that may lead to the display.
  explicit QtToolkit(std::string plugins);

  std::unique_ptr<velmaro::FormPeer> NewPeer(velmaro::Form& form) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::ListBox& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::CommandButton& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::OptionButton& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::ComboBox& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::TextBox& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Label& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::PictureBox& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Frame& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Image& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Line& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::HScrollBar& control) override;
  std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Timer& timer) override;

  bool ProcessNextEvent() override;
  void ProcessWaitingEvents() override;
  void WaitFor(int descriptor) override;
  int MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags) override;
  bool GetOpenFileNameA(platform::OPENFILENAME& dialog) override;
  platform::WindowHandle GetActiveWindow() override;
  platform::WindowHandle NewTip(std::uint32_t style) override;
  bool EndTip(platform::WindowHandle tip) override;
  void TellTip(platform::WindowHandle tip, std::uint32_t message, const platform::TOOLINFO& tool) override;
  void TellTip(platform::WindowHandle tip, std::uint32_t icon, const std::string& title) override;
  void TellTip(platform::WindowHandle tip, std::uint32_t message, std::uint32_t color) override;

 private:
  Balloon* FindTip(platform::WindowHandle tip);

  // Qt keeps the arguments for as long as it runs. It is given none of the program's own, which are not meant for it.
  std::string plugins_;
  int count_ = 3;
  char name_[8] = "velmaro";
  char option_[10] = "-platform";
  char* arguments_[4] = {name_, option_, plugins_.data(), nullptr};
  QApplication application_;
  KeyRouter router_;
  std::map<platform::WindowHandle, std::unique_ptr<Balloon>> tips_;
  platform::WindowHandle lastTip_ = 0x80000000;
};

}  // namespace onlinux
