#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/TextBox.h"

namespace windows {

class TextBoxPeer final : public ControlPeer {
 public:
  explicit TextBoxPeer(velmaro::TextBox& box);
  void Apply(velmaro::Change what) override;
  void Read() override;
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
  Range Selection() const;

  velmaro::TextBox& box_;
  std::string shown_;  // the field's text as it was last read
  Range told_;
  bool applying_ = false;
};

}  // namespace windows
