#include <QLineEdit>

#include "platform/linux/qt/EditPeers.h"

namespace onlinux {
namespace {

QLineEdit& EditOf(const ControlPeer& peer) { return static_cast<QLineEdit&>(peer.Widget()); }

}  // namespace

SingleLinePeer::SingleLinePeer(velmaro::TextBox& box) : FieldPeer(box, MakeWidget<Heard<QLineEdit>>(box)) {
  auto& edit = static_cast<Heard<QLineEdit>&>(Widget());
  edit.listener = this;
  QObject::connect(&edit, &QLineEdit::textChanged, &edit, [this](const QString& text) {
    if (IsApplying()) return;
    text_.Edited(text, text.size());
    box_.TextByUser(text_.Bytes());
    NoteSelection();
  });
  QObject::connect(&edit, &QLineEdit::selectionChanged, &edit, [this] { NoteSelection(); });
  QObject::connect(&edit, &QLineEdit::cursorPositionChanged, &edit, [this] { NoteSelection(); });
}

void SingleLinePeer::ShowContents() {
  text_ = ShownText(box_.Text());
  Quietly([&] {
    EditOf(*this).setText(text_.Shown());
    EditOf(*this).setCursorPosition(0);
  });
}

void SingleLinePeer::ShowSelection() {
  const auto start = text_.PlaceOf(box_.SelStart());
  const auto end = text_.PlaceOf(box_.SelStart() + box_.SelLength());
  Quietly([&] { EditOf(*this).setSelection(static_cast<int>(start), static_cast<int>(end - start)); });
}

void SingleLinePeer::NoteSelection() {
  const auto& edit = EditOf(*this);
  // While the text is being changed, places in it are told before the text is.
  if (IsApplying() || edit.text() != text_.Shown()) return;
  const auto place = edit.hasSelectedText() ? edit.selectionStart() : edit.cursorPosition();
  const auto start = text_.ByteAt(place);
  box_.SelectionByUser(start, text_.ByteAt(place + edit.selectedText().size()) - start);
}

}  // namespace onlinux
