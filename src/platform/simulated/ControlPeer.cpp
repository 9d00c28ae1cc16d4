#include "platform/simulated/ControlPeer.h"

#include "platform/simulated/FormWindow.h"
#include "runtime/Form.h"
#include "runtime/ListBox.h"

namespace simulated {

ControlPeer::ControlPeer(velmaro::Control& control) : control_(control) { desktop_.controls[handle_] = &control; }

ControlPeer::~ControlPeer() { desktop_.controls.erase(handle_); }

void ControlPeer::Apply(velmaro::Change what) {
  ++told_[what];
  if (desktop_.refusedChanges.contains(what)) throw velmaro::RuntimeError("the control refuses");
  const auto* list = what == velmaro::Change::Rows ? dynamic_cast<velmaro::ListBox*>(&control_) : nullptr;
  if (list && list->ListCount() > desktop_.listRowLimit) throw velmaro::RuntimeError("the list box takes no more rows");
}

void ControlPeer::SetFocus() {
  if (auto* window = WindowFor(control_.Owner())) window->focus = &control_;
}

int ControlPeer::Told(velmaro::Change what) const {
  const auto at = told_.find(what);
  return at == told_.end() ? 0 : at->second;
}

int Told(const velmaro::Control& control, velmaro::Change what) {
  const auto* peer = dynamic_cast<const ControlPeer*>(control.Peer());
  return peer ? peer->Told(what) : 0;
}

}  // namespace simulated
