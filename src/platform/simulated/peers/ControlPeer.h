#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>

#include "platform/simulated/Desktop.h"
#include "platform/simulated/peers/Living.h"
#include "runtime/Peers.h"

namespace simulated {

// The native side of a control of any kind. It shows what it was told last and what the user did since, and counts what
// it was told.
class ControlPeer final : public velmaro::Peer {
 public:
  explicit ControlPeer(velmaro::Control& control);
  ~ControlPeer() override;

  // Throws RuntimeError for what the desktop's controls refuse.
  void Apply(velmaro::Change what) override;
  // Tells the model what changes without an event: the selected row, the text, the caret.
  void Read() override;
  platform::WindowHandle hWnd() const override { return handle_; }
  // How often the peer was told of a change.
  int Told(velmaro::Change what) const;
  // True where the control shows what its model holds.
  bool IsUpToDate();

  // What the user does to the control. The model is told of a new text and a new top row; it asks for the rest.
  void TakeText(const std::string& text, std::size_t caret = 0);
  void TakeCaret(std::size_t start, std::size_t length) { caret_ = {start, length}; }
  void TakeRow(int row) { row_ = row; }
  void TakeTop(int row);

 private:
  // While one lives, the model holds what it holds: nothing of the user's is told to it when it asks.
  struct Deaf {
    explicit Deaf(ControlPeer& peer) : deaf(peer.deaf_) { deaf = true; }
    ~Deaf() { deaf = false; }
    bool& deaf;
  };
  void Show(velmaro::Change what);

  Desktop& desktop_ = TheDesktop();
  Living living_;
  velmaro::Control& control_;
  platform::WindowHandle handle_ = desktop_.NewHandle();
  std::map<velmaro::Change, int> told_;
  std::map<velmaro::Change, std::string> shown_;
  std::pair<std::size_t, std::size_t> caret_;  // where the selection begins, and how long it is
  int row_ = -1;
  bool deaf_ = false;
};

// The peer of a control that shows.
ControlPeer& PeerOf(const velmaro::Control& control);

}  // namespace simulated
