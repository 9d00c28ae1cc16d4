#include "runtime/ComboBox.h"

namespace velmaro {

const std::string& ComboBox::Text() const {
  ReadPeer();
  return text_;
}

void ComboBox::SetText(std::string text) {
  ReadPeer();
  Set(text_, std::move(text), Change::Text);
}

std::int16_t ComboBox::ListCount() const {
  ReadPeer();
  return static_cast<std::int16_t>(entries_.size());
}

const std::string& ComboBox::List(int index) const {
  if (index < 0 || index >= ListCount()) throw RuntimeError("the list has no such entry");
  return entries_[static_cast<std::size_t>(index)];
}

void ComboBox::AddItem(std::string text, int index) {
  if (index < 0 || index > ListCount()) throw RuntimeError("the list has no such place");
  if (entries_.size() >= 32767) throw RuntimeError("the list is full");
  entries_.insert(entries_.begin() + index, std::move(text));
  Tell(Change::Rows);
}

}  // namespace velmaro
