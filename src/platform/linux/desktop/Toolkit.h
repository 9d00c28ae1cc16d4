#pragma once

#include <memory>
#include <string>

#include "platform/comdlg32.h"
#include "platform/user32.h"
#include "runtime/Peers.h"

namespace onlinux {

// All that the platform does with the widget toolkit. The toolkit takes far longer to load than a program takes to
// start, and a run that shows nothing has no need of it, so it stands behind a library of its own.
class Toolkit {
 public:
  virtual ~Toolkit() = default;

  // The peers of a form and of its controls.
  virtual std::unique_ptr<velmaro::FormPeer> NewPeer(velmaro::Form& form) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::ListBox& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::CommandButton& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::OptionButton& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::ComboBox& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::TextBox& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Label& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::PictureBox& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Frame& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Image& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Line& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::HScrollBar& control) = 0;
  virtual std::unique_ptr<velmaro::Peer> NewPeer(velmaro::Timer& timer) = 0;

  // Waits for the next event and raises it; false when none can come any more.
  virtual bool ProcessNextEvent() = 0;
  // Raises the events that wait already.
  virtual void ProcessWaitingEvents() = 0;

  // Waits until a descriptor can be read from. Windows are drawn meanwhile, and what the user does waits too.
  virtual void WaitFor(int descriptor) = 0;

  // What the platform's functions of these names do.
  virtual int MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags) = 0;
  virtual bool GetOpenFileNameA(platform::OPENFILENAME& dialog) = 0;
  virtual platform::WindowHandle GetActiveWindow() = 0;

  // A tooltip with the platform's style bits; and what a message tells it: its tool, its title with an icon, or a
  // colour.
  virtual platform::WindowHandle NewTip(std::uint32_t style) = 0;
  virtual bool EndTip(platform::WindowHandle tip) = 0;
  virtual void TellTip(platform::WindowHandle tip, std::uint32_t message, const platform::TOOLINFO& tool) = 0;
  virtual void TellTip(platform::WindowHandle tip, std::uint32_t icon, const std::string& title) = 0;
  virtual void TellTip(platform::WindowHandle tip, std::uint32_t message, std::uint32_t color) = 0;
};

// The toolkit, loaded and connected to the user's display at the first call. Null where there is no display, no way to
// it or no such library; the error output then says so, once.
Toolkit* TheToolkit();
// Begins to load the toolkit's libraries in the background; whoever asks for the toolkit waits for them.
void ExpectToolkit();
// The toolkit where it has been loaded, else null.
Toolkit* LoadedToolkit();

// The library, and the name under which it gives its toolkit away, for the ways of showing windows that it may take.
// The second word is a folder whose plugins it must not load, empty for none.
inline constexpr const char* ToolkitName = "velmaro-toolkit.so";
inline constexpr const char* ToolkitEntry = "VelmaroToolkit";

}  // namespace onlinux
