#pragma once

#include <QAbstractListModel>

#include "platform/linux/qt/ControlPeer.h"
#include "runtime/ListBox.h"

namespace onlinux {

// The rows of a list box, read from the model when they are drawn.
class RowSource : public QAbstractListModel {
 public:
  explicit RowSource(const velmaro::ListBox& list) : list_(list) {}
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : list_.ListCount(); }
  QVariant data(const QModelIndex& index, int role) const override;
  // All rows may be others now.
  void Changed() {
    beginResetModel();
    endResetModel();
  }

 private:
  const velmaro::ListBox& list_;
};

class ListBoxPeer : public ControlPeer {
 public:
  explicit ListBoxPeer(velmaro::ListBox& list);
  void Begin() override;
  void Apply(velmaro::Change what) override;
  void PressedTwice(const QMouseEvent& event) override;

 protected:
  void ShowColors() override { ShowColorsAs(QPalette::Text, QPalette::Base); }

 private:
  void ShowRows();
  void ShowSelected();
  void Picked(const QModelIndex& row);

  velmaro::ListBox& list_;
  RowSource rows_;
};

}  // namespace onlinux
