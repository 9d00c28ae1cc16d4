#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

#include "platform/linux/qt/EditPeers.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

QComboBox& BoxOf(const ControlPeer& peer) { return static_cast<QComboBox&>(peer.Widget()); }

}  // namespace

ComboBoxPeer::ComboBoxPeer(velmaro::ComboBox& box) : ControlPeer(box, MakeWidget<Heard<QComboBox>>(box)), box_(box) {
  auto& widget = static_cast<Heard<QComboBox>&>(Widget());
  widget.listener = this;
  widget.setEditable(true);
  widget.setInsertPolicy(QComboBox::NoInsert);
  // What the user types is a command, and nothing is put behind it.
  widget.setCompleter(nullptr);
  QObject::connect(&widget, &QComboBox::editTextChanged, &widget, [this](const QString& text) {
    if (!IsApplying()) box_.TextByUser(FromQt(text));
  });
  QObject::connect(&widget, &QComboBox::activated, &widget, [this](int index) {
    // An entry shows as one line, and is meant as it was stored.
    box_.TextByUser(box_.List(index));
    box_.RaiseClick();
  });
}

void ComboBoxPeer::Begin() {
  ControlPeer::Begin();
  auto& widget = BoxOf(*this);
  for (QWidget* part : {static_cast<QWidget*>(widget.lineEdit()), static_cast<QWidget*>(widget.view())})
    part->setAccessibleName(widget.accessibleName());
  ShowEntries();
}

void ComboBoxPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Rows || what == velmaro::Change::Text) return ShowEntries();
  ControlPeer::Apply(what);
}

void ComboBoxPeer::ShowEntries() {
  auto& widget = BoxOf(*this);
  Quietly([&] {
    widget.clear();
    for (int i = 0; i < box_.ListCount(); ++i) widget.addItem(ToQtLine(box_.List(i)));
    widget.setCurrentIndex(-1);
    widget.setEditText(ToQtLine(box_.Text()));
    widget.lineEdit()->selectAll();
  });
}

}  // namespace onlinux
