#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "runtime/Control.h"

namespace velmaro {

// An edit field with a drop-down list, unsorted. Any text may stand in the field.
class ComboBox : public Control {
 public:
  using Control::Control;

  const std::string& Text() const { return text_; }
  void SetText(std::string text) { Set(text_, std::move(text), Change::Text); }
  // How many entries the list has.
  std::int16_t ListCount() const { return static_cast<std::int16_t>(entries_.size()); }
  // An entry of the list. Throws RuntimeError for one that is not there.
  const std::string& List(int index) const;
  // Adds an entry at the end.
  void AddItem(std::string text) { Insert(entries_.size(), std::move(text)); }
  // Adds an entry in front of the one at `index`. Throws RuntimeError where there is no such place.
  void AddItem(std::string text, int index);

  // For peers: the user typed or picked a text.
  void TextByUser(std::string text) { text_ = std::move(text); }

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  void Insert(std::size_t at, std::string text);

  std::string text_;
  std::vector<std::string> entries_;
};

}  // namespace velmaro
