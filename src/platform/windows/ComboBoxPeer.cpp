#include "platform/windows/ComboBoxPeer.h"

#include "platform/windows/Codepage.h"

namespace windows {
namespace {

// Room for ten entries below the field, in pixels at 96 dots an inch.
constexpr int ListHeight = 140;

}  // namespace

ComboBoxPeer::ComboBoxPeer(velmaro::ComboBox& combo)
    : ControlPeer(combo, {.windowClass = L"COMBOBOX",
                          .style = WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL | CBS_HASSTRINGS,
                          .takesKeyboard = true,
                          .listHeight = ListHeight}),
      combo_(combo) {
  Send(CB_LIMITTEXT, 0);
  Refill();
  ShowText();
}

void ComboBoxPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Rows)
    Refill();
  else if (what == velmaro::Change::Text)
    ShowText();
  else
    ControlPeer::Apply(what);
}

void ComboBoxPeer::Refill() {
  while (Send(CB_GETCOUNT) > 0) Send(CB_DELETESTRING, 0);
  for (int i = 0; i < combo_.ListCount(); ++i) {
    const auto text = platform::Widen(combo_.List(i), platform::Nul::Escaped);
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
}

void ComboBoxPeer::ShowText() {
  applying_ = true;
  SetText(Window(), combo_.Text());
  applying_ = false;
}

// When the user picks an entry, the field does not show it yet.
std::string ComboBoxPeer::PickedText() const {
  const auto picked = Send(CB_GETCURSEL);
  return picked < 0 ? TextOf(Window()) : combo_.List(static_cast<int>(picked));
}

std::optional<LRESULT> ComboBoxPeer::Notified(const Message& message) {
  if (message.id != WM_COMMAND) return ControlPeer::Notified(message);
  if (HIWORD(message.wParam) == CBN_SELCHANGE) combo_.TextByUser(PickedText());
  if (HIWORD(message.wParam) == CBN_EDITCHANGE && !applying_) combo_.TextByUser(TextOf(Window()));
  return 0;
}

LRESULT ComboBoxPeer::Handle(const Message& message) {
  const auto result = ControlPeer::Handle(message);
  // A text that another program puts in is the user's, though the field does not tell of it.
  if (message.id == WM_SETTEXT && !applying_) combo_.TextByUser(TextOf(Window()));
  return result;
}

}  // namespace windows
