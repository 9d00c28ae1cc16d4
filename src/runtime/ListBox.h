#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "runtime/Control.h"

namespace velmaro {

// A list of rows, unsorted, with at most one selected. Indexes begin at 0 and are 16 bits wide.
class ListBox : public Control {
 public:
  // The most rows that 16-bit indexes reach; AddItem refuses more.
  static constexpr int MaxRows = 32767;

  using Control::Control;

  // A row, with its number and its key.
  struct Row {
    std::string text = {};
    std::int32_t data = 0;
    std::uint64_t key = 0;
  };

  // The user pressed a row twice.
  std::function<void()> DblClick;

  // Removes all rows; nothing is selected any more and the list stands at its top.
  void Clear();
  // Adds a row at the end. Throws RuntimeError when the list is full.
  void AddItem(std::string text);
  // How many rows there are.
  std::int16_t ListCount() const;
  // The text of a row. Throws RuntimeError for a row that is not there.
  const std::string& List(int index) const { return At(index).text; }
  // The number that a row carries, 0 until it is set. Throws RuntimeError for a row that is not there.
  std::int32_t ItemData(int index) const { return At(index).data; }
  void SetItemData(int index, std::int32_t data);
  // What tells the thing that a row shows from all others, 0 until it is set. Throws RuntimeError for a row that is not
  // there.
  std::uint64_t ItemKey(int index) const { return At(index).key; }
  void SetItemKey(int index, std::uint64_t key);
  // The selected row, -1 for none.
  std::int16_t ListIndex() const;
  // Selects a row, or none with -1. Throws RuntimeError for a row that is not there.
  void SetListIndex(int index);
  // The text of the selected row, empty when there is none.
  std::string Text() const;

  // Holds back what the rows' changes do on the screen: as long as one lives, the peer is told nothing, and then all
  // at once, so that the list is refilled without flicker.
  class Refill {
   public:
    explicit Refill(ListBox& list) : list_(list) {
      list_.ReadRows();
      ++list_.held_;
    }
    ~Refill() { list_.EndRefill(); }
    Refill(const Refill&) = delete;
    Refill& operator=(const Refill&) = delete;

   private:
    ListBox& list_;
  };

  // Holds a refill back as well, and at its end selects the row that was selected and brings the one to the top that
  // stood there, as far as rows of the same keys, 0 excepted, are still there.
  class SamePlace {
   public:
    explicit SamePlace(ListBox& list);
    ~SamePlace();
    SamePlace(const SamePlace&) = delete;
    SamePlace& operator=(const SamePlace&) = delete;

   private:
    Refill refill_;
    ListBox& list_;
    std::uint64_t selected_;
    std::vector<std::uint64_t> shown_;  // the keys from the top on
  };

  // The row at the top of the part that shows.
  int TopIndex() const { return top_; }

  // For peers: the user selected a row, or another program filled the list.
  void SelectedByUser(int index) { selected_ = static_cast<std::int16_t>(index); }
  void RowsByUser(std::vector<Row> rows) { rows_ = std::move(rows); }
  // For peers: another row stands at the top.
  void ScrolledByUser(int top) { top_ = top; }
  // For peers: raises the event.
  void RaiseDblClick();

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  void ReadRows() const;
  const Row& At(int index) const;
  void RowsChanged();
  void EndRefill();
  int RowOf(std::uint64_t key) const;

  std::vector<Row> rows_;
  std::int16_t selected_ = -1;
  int top_ = 0;
  int held_ = 0;
  bool changed_ = false;
};

}  // namespace velmaro
