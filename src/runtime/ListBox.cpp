#include "runtime/ListBox.h"

#include "runtime/Form.h"

namespace velmaro {

const ListBox::Row& ListBox::At(int index) const {
  if (index < 0 || index >= static_cast<int>(rows_.size())) throw RuntimeError("the list has no such row");
  return rows_[static_cast<std::size_t>(index)];
}

void ListBox::RowsChanged() {
  if (held_ == 0)
    Tell(Change::Rows);
  else
    changed_ = true;
}

void ListBox::EndRefill() {
  if (--held_ > 0 || !changed_) return;
  changed_ = false;
  Resume([&] { Tell(Change::Rows); });
}

void ListBox::Clear() {
  rows_.clear();
  selected_ = -1;
  RowsChanged();
}

void ListBox::AddItem(std::string text) {
  if (rows_.size() >= MaxRows) throw RuntimeError("the list is full");
  rows_.push_back({.text = std::move(text)});
  RowsChanged();
}

void ListBox::SetItemData(int index, std::int32_t data) {
  At(index);
  rows_[static_cast<std::size_t>(index)].data = data;
}

void ListBox::SetListIndex(int index) {
  if (index != -1) At(index);
  Set(selected_, static_cast<std::int16_t>(index), Change::ListIndex);
}

std::string ListBox::Text() const { return selected_ < 0 ? std::string() : List(selected_); }

void ListBox::RaiseDblClick() {
  if (Enabled() && DblClick && !Owner().Unloaded()) Resume(DblClick);
}

}  // namespace velmaro
