#include "platform/linux/qt/ListBoxPeer.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

constexpr int margin = 3;

// Draws a row: what stands before its Tab, and the rest in a column behind it.
class RowPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    auto row = option;
    initStyleOption(&row, index);
    const auto text = std::exchange(row.text, QString());
    const auto* style = row.widget->style();
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
    const auto group = row.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const bool selected = row.state.testFlag(QStyle::State_Selected);
    painter->setFont(row.font);
    painter->setPen(row.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    const auto tab = text.indexOf('\t');
    auto room = row.rect.adjusted(margin, 0, -margin, 0);
    if (tab >= 0) {
      painter->drawText(room, Qt::AlignVCenter | Qt::TextSingleLine, text.left(tab));
      room.setLeft(std::max(room.left() + row.fontMetrics.horizontalAdvance("[Normal]__"),
                            room.left() + row.fontMetrics.horizontalAdvance(text.left(tab) + "_")));
    }
    // The end of a path tells more than its middle.
    const auto rest = row.fontMetrics.elidedText(text.mid(tab + 1), Qt::ElideMiddle, room.width());
    painter->drawText(room, Qt::AlignVCenter | Qt::TextSingleLine, rest);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {1, option.fontMetrics.height() + 1};
  }
};

// Only the left button picks a row; the others act on the row that is picked.
class ListWidget : public Heard<QListView> {
 public:
  using Heard<QListView>::Heard;

 protected:
  // Where no row is picked, every key would lead to the first one.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
    if (action == MoveEnd) return model()->index(model()->rowCount() - 1, 0);
    return Heard<QListView>::moveCursor(action, modifiers);
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton)
      Heard<QListView>::mousePressEvent(event);
    else
      event->accept();
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (listener && event->reason() == QContextMenuEvent::Keyboard) static_cast<ListBoxPeer*>(listener)->MenuAsked();
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton)
      Heard<QListView>::mouseDoubleClickEvent(event);
    else
      event->accept();
  }
};

ListWidget* NewList(const velmaro::ListBox& list) {
  auto* widget = MakeWidget<ListWidget>(list);
  widget->setItemDelegate(new RowPainter(widget));
  widget->setUniformItemSizes(true);
  widget->setSelectionMode(QAbstractItemView::SingleSelection);
  widget->setEditTriggers(QAbstractItemView::NoEditTriggers);
  widget->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  widget->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  return widget;
}

}  // namespace

QVariant RowSource::data(const QModelIndex& index, int role) const {
  const bool spoken = role == Qt::AccessibleTextRole;
  if ((role != Qt::DisplayRole && !spoken) || !hasIndex(index.row(), index.column())) return {};
  auto text = ToQtLine(rows_[static_cast<std::size_t>(index.row())]);
  return spoken ? text.replace('	', ' ') : text;
}

void RowSource::Take(const velmaro::ListBox& list) {
  std::vector<std::string> rows;
  for (int row = 0; row < list.ListCount(); ++row) rows.push_back(list.List(row));
  if (rows == rows_) return;
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

ListBoxPeer::ListBoxPeer(velmaro::ListBox& list) : ControlPeer(list, NewList(list)), list_(list) {
  auto& widget = static_cast<ListWidget&>(Widget());
  widget.listener = this;
  widget.setModel(&rows_);
  QObject::connect(widget.selectionModel(), &QItemSelectionModel::currentRowChanged, &widget,
                   [this](const QModelIndex& row) { Picked(row); });
  QObject::connect(widget.selectionModel(), &QItemSelectionModel::selectionChanged, &widget, [this] { Marked(); });
  // The list scrolls by whole rows.
  QObject::connect(widget.verticalScrollBar(), &QScrollBar::valueChanged, &widget,
                   [this](int top) { list_.ScrolledByUser(top); });
}

void ListBoxPeer::Begin() {
  ControlPeer::Begin();
  ShowRows();
}

void ListBoxPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Rows) return ShowRows();
  if (what == velmaro::Change::ListIndex) return ShowSelected();
  ControlPeer::Apply(what);
}

void ListBoxPeer::ShowRows() {
  auto& widget = static_cast<ListWidget&>(Widget());
  const auto top = list_.TopIndex();
  Quietly([&] { rows_.Take(list_); });
  ShowSelected();
  widget.scrollTo(rows_.index(top), QAbstractItemView::PositionAtTop);
  list_.ScrolledByUser(widget.verticalScrollBar()->value());
}

void ListBoxPeer::ShowSelected() {
  auto& widget = static_cast<ListWidget&>(Widget());
  const auto row = list_.ListIndex() < 0 ? QModelIndex() : rows_.index(list_.ListIndex());
  Quietly([&] {
    widget.setCurrentIndex(row);
    if (!row.isValid()) widget.clearSelection();
  });
}

// A screen reader moves the mark alone, or takes it away, as Ctrl does. Commands act on the row that has it.
void ListBoxPeer::Marked() {
  if (IsApplying()) return;
  auto& widget = static_cast<ListWidget&>(Widget());
  const auto marked = widget.selectionModel()->selectedRows();
  if (marked.isEmpty()) return ShowSelected();
  Picked(marked.front());
  Quietly([&] { widget.selectionModel()->setCurrentIndex(marked.front(), QItemSelectionModel::NoUpdate); });
}

void ListBoxPeer::Picked(const QModelIndex& row) {
  if (IsApplying() || !row.isValid() || row.row() == list_.ListIndex()) return;
  list_.SelectedByUser(row.row());
  list_.RaiseClick();
}

void ListBoxPeer::MenuAsked() {
  auto& widget = static_cast<ListWidget&>(Widget());
  const auto row = widget.currentIndex();
  if (row.isValid()) widget.scrollTo(row);
  const auto under = row.isValid() ? widget.visualRect(row).bottomLeft() : QPoint();
  Form().OpenMenuAt(widget.viewport()->mapToGlobal(under),
                    [&] { list_.RaiseMouseUp(velmaro::MouseButton::Right, 0, 0, 0); });
}

void ListBoxPeer::PressedTwice(const QMouseEvent& event) {
  Pressed(event);
  if (event.button() == Qt::LeftButton) list_.RaiseDblClick();
}

}  // namespace onlinux
