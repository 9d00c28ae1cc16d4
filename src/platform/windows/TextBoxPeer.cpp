#include "platform/windows/TextBoxPeer.h"

#include "platform/windows/Codepage.h"

namespace windows {
namespace {

DWORD StyleOf(const velmaro::TextBox& box) {
  DWORD style = ES_AUTOHSCROLL;
  if (box.MultiLine()) style |= ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL;
  if (box.ScrollBars()) style |= WS_VSCROLL | WS_HSCROLL;
  return style;
}

// What can move the caret or the selection.
bool MovesCaret(UINT message) {
  switch (message) {
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_SETFOCUS:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO:
    case EM_SETSEL:
    case EM_REPLACESEL:
      return true;
    default:
      return false;
  }
}

// Tab and Esc go to the form also from a text of many lines, and coming in does not select it.
LRESULT WithoutFormKeys(LRESULT code, LPARAM message) {
  code &= ~static_cast<LRESULT>(DLGC_HASSETSEL);
  const auto* key = reinterpret_cast<const MSG*>(message);
  const bool forForm = key && (key->wParam == VK_TAB || key->wParam == VK_ESCAPE);
  return forForm ? code & ~static_cast<LRESULT>(DLGC_WANTALLKEYS | DLGC_WANTTAB) : code;
}

}  // namespace

TextBoxPeer::TextBoxPeer(velmaro::TextBox& box)
    : ControlPeer(
          box,
          {.windowClass = L"EDIT", .style = StyleOf(box), .extendedStyle = WS_EX_CLIENTEDGE, .takesKeyboard = true}),
      box_(box) {
  Send(EM_SETLIMITTEXT, 0);
  ShowText();
  ShowSelection();
}

void TextBoxPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Text)
    ShowText();
  else if (what == velmaro::Change::Selection)
    ShowSelection();
  else
    ControlPeer::Apply(what);
}

void TextBoxPeer::ShowText() {
  applying_ = true;
  SetText(Window(), box_.Text());
  applying_ = false;
  told_ = Selection();
}

void TextBoxPeer::ShowSelection() {
  applying_ = true;
  const auto start = platform::UnitsBefore(box_.Text(), box_.SelStart());
  const auto end = platform::UnitsBefore(box_.Text(), box_.SelStart() + box_.SelLength());
  Send(EM_SETSEL, start, static_cast<LPARAM>(end));
  Send(EM_SCROLLCARET);
  applying_ = false;
  told_ = Selection();
}

void TextBoxPeer::TellText() { box_.TextByUser(TextOf(Window())); }

void TextBoxPeer::TellSelection() {
  const auto range = Selection();
  if (range == std::exchange(told_, range)) return;
  const auto start = platform::BytesBefore(box_.Text(), range.start);
  box_.SelectionByUser(start, platform::BytesBefore(box_.Text(), range.end) - start);
}

TextBoxPeer::Range TextBoxPeer::Selection() const {
  Range range;
  Send(EM_GETSEL, reinterpret_cast<WPARAM>(&range.start), reinterpret_cast<LPARAM>(&range.end));
  return range;
}

std::optional<LRESULT> TextBoxPeer::Notified(const Message& message) {
  if (message.id != WM_COMMAND) return ControlPeer::Notified(message);
  if (HIWORD(message.wParam) == EN_CHANGE && !applying_) TellText();
  return 0;
}

LRESULT TextBoxPeer::Handle(const Message& message) {
  const auto result = ControlPeer::Handle(message);
  if (message.id == WM_GETDLGCODE && box_.MultiLine()) return WithoutFormKeys(result, message.lParam);
  if (applying_) return result;
  // A text that another program puts in is the user's, though a field of many lines does not tell of it.
  if (message.id == WM_SETTEXT) TellText();
  if (MovesCaret(message.id) || message.id == WM_SETTEXT) TellSelection();
  return result;
}

}  // namespace windows
