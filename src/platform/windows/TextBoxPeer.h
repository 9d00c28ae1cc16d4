#pragma once

#include "platform/windows/ControlPeer.h"
#include "runtime/TextBox.h"

namespace windows {

class TextBoxPeer final : public ControlPeer {
 public:
  explicit TextBoxPeer(velmaro::TextBox& box);
  void Apply(velmaro::Change what) override;
  std::optional<LRESULT> Notified(const Message& message) override;

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  struct Range {
    DWORD start = 0;
    DWORD end = 0;
    bool operator==(const Range&) const = default;
  };
  void ShowText();
  void ShowSelection();
  void TellText();
  void TellSelection();
  Range Selection() const;

  velmaro::TextBox& box_;
  Range told_;
  bool applying_ = false;
};

}  // namespace windows
