#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

#include "platform/linux/qt/ControlPeer.h"
#include "runtime/ListBox.h"

namespace onlinux {

// The rows of a list box.
class RowSource : public QAbstractListModel {
 public:
  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override;
  // Takes the rows that a list box has now. Nothing is drawn anew where they are the same.
  void Take(const velmaro::ListBox& list);

 private:
  std::vector<std::string> rows_;
};

class ListBoxPeer : public ControlPeer {
 public:
  explicit ListBoxPeer(velmaro::ListBox& list);
  void Begin() override;
  void Apply(velmaro::Change what) override;
  void PressedTwice(const QMouseEvent& event) override;
  // For the widget: a key asks for the menu of the selected row, which is what the right button brings.
  void MenuAsked();

 protected:
  void ShowColors() override { ShowColorsAs(QPalette::Text, QPalette::Base); }

 private:
  void ShowRows();
  void ShowSelected();
  void Marked();
  void Picked(const QModelIndex& row);

  velmaro::ListBox& list_;
  RowSource rows_;
};

}  // namespace onlinux
