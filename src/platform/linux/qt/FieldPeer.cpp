#include "platform/linux/qt/EditPeers.h"

namespace onlinux {

void FieldPeer::Begin() {
  ControlPeer::Begin();
  ShowContents();
  ShowSelection();
}

void FieldPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Text) return ShowContents();
  if (what == velmaro::Change::Selection) return ShowSelection();
  ControlPeer::Apply(what);
}

}  // namespace onlinux
