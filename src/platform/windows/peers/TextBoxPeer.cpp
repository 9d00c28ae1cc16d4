#include "platform/windows/peers/TextBoxPeer.h"

#include "platform/windows/ground/Codepage.h"
#include "runtime/Failures.h"

namespace windows {
namespace {

DWORD StyleOf(const velmaro::TextBox& box) {
  DWORD style = ES_AUTOHSCROLL;
  if (box.MultiLine()) style |= ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL;
  if (box.ScrollBars()) style |= WS_VSCROLL | WS_HSCROLL;
  return style;
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
    : ControlPeer(box, {.windowClass = L"EDIT",
                        .style = StyleOf(box),
                        .extendedStyle = WS_EX_CLIENTEDGE,
                        .takesKeyboard = true,
                        .isField = true}),
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
  bool holds = false;
  velmaro::Resume([&] { holds = velmaro::WithinMemory([&] { return SetText(Window(), box_.Text()); }); });
  applying_ = false;
  shown_ = velmaro::WithinMemory([&] { return TextOf(Window()); });
  told_ = Selection();
  if (!holds) box_.TextRefused();
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

// The caret moves without a word, and so does a text that another program puts in.
void TextBoxPeer::Read() {
  if (std::exchange(applying_, true)) return;
  auto text = TextOf(Window());
  const bool changed = text != shown_;
  if (changed) {
    shown_ = std::move(text);
    box_.TextByUser(shown_);
  }
  const auto range = Selection();
  if (range != std::exchange(told_, range) || changed) {
    const auto start = platform::BytesBefore(box_.Text(), range.start);
    box_.SelectionByUser(start, platform::BytesBefore(box_.Text(), range.end) - start);
  }
  applying_ = false;
}

TextBoxPeer::Range TextBoxPeer::Selection() const {
  Range range;
  Send(EM_GETSEL, reinterpret_cast<WPARAM>(&range.start), reinterpret_cast<LPARAM>(&range.end));
  return range;
}

std::optional<LRESULT> TextBoxPeer::Notified(const Message& message) {
  if (message.id != WM_COMMAND) return ControlPeer::Notified(message);
  if (HIWORD(message.wParam) == EN_CHANGE) Read();
  return 0;
}

LRESULT TextBoxPeer::Handle(const Message& message) {
  const auto result = ControlPeer::Handle(message);
  if (message.id == WM_GETDLGCODE && box_.MultiLine()) return WithoutFormKeys(result, message.lParam);
  // A field of many lines does not tell of a text that another program puts in.
  if (message.id == WM_SETTEXT) Read();
  return result;
}

}  // namespace windows
