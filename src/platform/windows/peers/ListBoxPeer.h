#pragma once

#include <string>
#include <vector>

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/ListBox.h"

namespace windows {

class ListBoxPeer final : public ControlPeer {
 public:
  explicit ListBoxPeer(velmaro::ListBox& list);
  void Apply(velmaro::Change what) override;
  void Read() override;
  void Rescale() override;
  std::optional<LRESULT> Notified(const Message& message) override;

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  void Refill();
  void ReadRows();
  bool StandsAsShown() const;
  void AddRows();
  void SetData() const;
  void Select();
  void KeepExtent();
  int RowIndex() const { return static_cast<int>(Send(LB_GETCURSEL)); }

  velmaro::ListBox& list_;
  std::vector<std::string> shown_;
  bool applying_ = false;
  bool filledByOthers_ = false;
};

}  // namespace windows
