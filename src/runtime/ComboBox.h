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

  // What the field shows now.
  const std::string& Text() const;
  void SetText(std::string text);
  // How many entries the list has.
  std::int16_t ListCount() const;
  // An entry of the list. Throws RuntimeError for one that is not there.
  const std::string& List(int index) const;
  // Adds an entry at the end.
  void AddItem(std::string text) { AddItem(std::move(text), ListCount()); }
  // Adds an entry in front of the one at `index`. Throws RuntimeError where there is no such place.
  void AddItem(std::string text, int index);

  // For peers: the user typed or picked a text, or another program filled the list.
  void TextByUser(std::string text) { text_ = std::move(text); }
  void EntriesByUser(std::vector<std::string> entries) { entries_ = std::move(entries); }

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  std::string text_;
  std::vector<std::string> entries_;
};

}  // namespace velmaro
