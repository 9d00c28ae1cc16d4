#include "runtime/ListBox.h"

#include <algorithm>

#include "runtime/Form.h"

namespace velmaro {

// While a refill is held back, the peer still shows what was there before it.
void ListBox::ReadRows() const {
  if (held_ == 0) ReadPeer();
}

std::int16_t ListBox::ListCount() const {
  ReadRows();
  return static_cast<std::int16_t>(rows_.size());
}

std::int16_t ListBox::ListIndex() const {
  ReadRows();
  return selected_;
}

const ListBox::Row& ListBox::At(int index) const {
  ReadRows();
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
  top_ = 0;
  RowsChanged();
}

void ListBox::AddItem(std::string text) {
  ReadRows();
  if (rows_.size() >= MaxRows) throw RuntimeError("the list is full");
  rows_.push_back({.text = std::move(text)});
  RowsChanged();
}

void ListBox::SetItemData(int index, std::int32_t data) {
  At(index);
  rows_[static_cast<std::size_t>(index)].data = data;
}

void ListBox::SetItemKey(int index, std::uint64_t key) {
  At(index);
  rows_[static_cast<std::size_t>(index)].key = key;
}

// The row of a key, -1 for none and for the key 0.
int ListBox::RowOf(std::uint64_t key) const {
  const auto at = key == 0 ? rows_.end() : std::ranges::find(rows_, key, &Row::key);
  return at == rows_.end() ? -1 : static_cast<int>(at - rows_.begin());
}

ListBox::SamePlace::SamePlace(ListBox& list)
    : refill_(list), list_(list), selected_(list.selected_ < 0 ? 0 : list.ItemKey(list.selected_)) {
  for (int row = list.top_; row < list.ListCount(); ++row) shown_.push_back(list.ItemKey(row));
}

ListBox::SamePlace::~SamePlace() {
  if (list_.selected_ < 0) list_.selected_ = static_cast<std::int16_t>(list_.RowOf(selected_));
  for (const auto key : shown_)
    if (const auto row = list_.RowOf(key); row >= 0) {
      list_.top_ = row;
      return;
    }
}

void ListBox::SetListIndex(int index) {
  ReadRows();
  if (index != -1) At(index);
  Set(selected_, static_cast<std::int16_t>(index), Change::ListIndex);
}

std::string ListBox::Text() const {
  const auto index = ListIndex();
  return index < 0 ? std::string() : List(index);
}

void ListBox::RaiseDblClick() {
  if (Enabled() && DblClick && !Owner().Unloaded()) Resume(DblClick);
}

}  // namespace velmaro
