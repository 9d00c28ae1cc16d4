#include <QApplication>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <algorithm>
#include <cstdint>

#include "platform/kernel32.h"
#include "platform/linux/qt/EditPeers.h"

namespace onlinux {
namespace {

QPlainTextEdit& EditOf(const ControlPeer& peer) { return static_cast<QPlainTextEdit&>(peer.Widget()); }

// What the user pastes or drops is text and nothing else. Qt's own way ends the program at a clipboard without any
// format, as one is that nobody owns, and takes the marks out of one whose first format is Markdown.
class PlainTextEdit : public Heard<QPlainTextEdit> {
 public:
  using Heard<QPlainTextEdit>::Heard;

 protected:
  bool canInsertFromMimeData(const QMimeData* source) const override { return source && source->hasText(); }
  void insertFromMimeData(const QMimeData* source) override {
    // No list is as long, and the toolkit would be busy with it for minutes.
    constexpr qsizetype most = 8 << 20;
    const auto text = source ? source->text() : QString();
    if (text.size() > most) return QApplication::beep();
    if (text.isEmpty()) return;
    insertPlainText(text);
    ensureCursorVisible();
  }
};

// The text as the document holds it, character by character, with LF at the line ends.
QString RawText(const QPlainTextEdit& edit) {
  auto text = edit.document()->toRawText();
  return text.replace(QChar(QChar::ParagraphSeparator), QChar('\n'));
}

// The document counts characters in 31 bits and takes this much memory for them and for each line. Asked beforehand: a
// system that has no more ends the program.
bool CanHold(const std::string& text) {
  constexpr std::size_t few = 1 << 20, most = 1 << 30, byCharacter = 10, byLine = 400;
  if (text.size() < few) return true;
  platform::MEMORYSTATUS memory;
  platform::GlobalMemoryStatus(memory);
  const auto lines =
      static_cast<std::uint64_t>(std::ranges::count_if(text, [](char c) { return c == '\r' || c == '\n'; }));
  return text.size() < most && text.size() * byCharacter + lines * byLine < memory.dwAvailPhys;
}

}  // namespace

ManyLinesPeer::ManyLinesPeer(velmaro::TextBox& box) : FieldPeer(box, MakeWidget<PlainTextEdit>(box)) {
  auto& edit = static_cast<Heard<QPlainTextEdit>&>(Widget());
  edit.listener = this;
  if (box.ScrollBars()) edit.setLineWrapMode(QPlainTextEdit::NoWrap);
  QObject::connect(edit.document(), &QTextDocument::contentsChange, &edit, [this](int at) { changedAt_ = at; });
  QObject::connect(&edit, &QPlainTextEdit::textChanged, &edit, [this] { NoteText(); });
  QObject::connect(&edit, &QPlainTextEdit::selectionChanged, &edit, [this] { NoteSelection(); });
  QObject::connect(&edit, &QPlainTextEdit::cursorPositionChanged, &edit, [this] { NoteSelection(); });
}

void ManyLinesPeer::ShowContents() {
  const bool holds = CanHold(box_.Text());
  text_ = ShownText(holds ? box_.Text() : std::string());
  if (!holds) box_.TextRefused();
  Quietly([&] { EditOf(*this).setPlainText(text_.Shown()); });
}

void ManyLinesPeer::ShowSelection() {
  auto& edit = EditOf(*this);
  auto cursor = edit.textCursor();
  cursor.setPosition(static_cast<int>(text_.PlaceOf(box_.SelStart())));
  cursor.setPosition(static_cast<int>(text_.PlaceOf(box_.SelStart() + box_.SelLength())), QTextCursor::KeepAnchor);
  Quietly([&] { edit.setTextCursor(cursor); });
  edit.ensureCursorVisible();
}

void ManyLinesPeer::NoteText() {
  if (IsApplying()) return;
  const auto now = RawText(EditOf(*this));
  // A change of looks alone is told as one too.
  if (now == text_.Shown()) return;
  text_.Edited(now, changedAt_);
  box_.TextByUser(text_.Bytes());
  NoteSelection();
}

void ManyLinesPeer::NoteSelection() {
  const auto& edit = EditOf(*this);
  if (IsApplying() || edit.document()->characterCount() - 1 != text_.Shown().size()) return;
  const auto cursor = edit.textCursor();
  const auto start = text_.ByteAt(cursor.selectionStart());
  box_.SelectionByUser(start, text_.ByteAt(cursor.selectionEnd()) - start);
}

}  // namespace onlinux
