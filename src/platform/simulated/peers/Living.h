#pragma once

#include "platform/simulated/Desktop.h"

namespace simulated {

// Counts a peer among the desktop's living ones for as long as the peer holds it.
class Living {
 public:
  Living() {
    ++desktop_.livePeers;
    ++desktop_.peersMade;
  }
  ~Living() { --desktop_.livePeers; }
  Living(const Living&) = delete;
  Living& operator=(const Living&) = delete;

 private:
  Desktop& desktop_ = TheDesktop();
};

}  // namespace simulated
