#include "runtime/ComboBox.h"

namespace velmaro {

const std::string& ComboBox::List(int index) const {
  if (index < 0 || index >= ListCount()) throw RuntimeError("the list has no such entry");
  return entries_[static_cast<std::size_t>(index)];
}

void ComboBox::AddItem(std::string text, int index) {
  if (index < 0 || index > ListCount()) throw RuntimeError("the list has no such place");
  Insert(static_cast<std::size_t>(index), std::move(text));
}

void ComboBox::Insert(std::size_t at, std::string text) {
  if (entries_.size() >= 32767) throw RuntimeError("the list is full");
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(at), std::move(text));
  Tell(Change::Rows);
}

}  // namespace velmaro
