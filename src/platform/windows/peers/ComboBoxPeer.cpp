#include "platform/windows/peers/ComboBoxPeer.h"

#include "platform/windows/ground/Codepage.h"

namespace windows {
namespace {

// Room for ten entries below the field, in pixels at 96 dots an inch.
constexpr int ListHeight = 140;

bool FillsList(UINT message) {
  switch (message) {
    case CB_ADDSTRING:
    case CB_INSERTSTRING:
    case CB_DELETESTRING:
    case CB_RESETCONTENT:
    case CB_DIR:
      return true;
    default:
      return false;
  }
}

}  // namespace

ComboBoxPeer::ComboBoxPeer(velmaro::ComboBox& combo)
    : ControlPeer(combo, {.windowClass = L"COMBOBOX",
                          .style = WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL | CBS_HASSTRINGS,
                          .takesKeyboard = true,
                          .isField = true,
                          .roomBelow = ListHeight}),
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
  applying_ = true;
  while (Send(CB_GETCOUNT) > 0) Send(CB_DELETESTRING, 0);
  for (int i = 0; i < combo_.ListCount(); ++i) {
    const auto text = platform::Widen(combo_.List(i), platform::Nul::Escaped);
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
  applying_ = filledByOthers_ = false;
}

void ComboBoxPeer::ShowText() {
  SetText(Window(), combo_.Text());
  shown_ = TextOf(Window());
}

// The control completes its field when its list drops, and other programs choose and fill without a word.
void ComboBoxPeer::Read() {
  if (applying_) return;
  if (std::exchange(filledByOthers_, false)) combo_.EntriesByUser(Entries());
  auto text = TextOf(Window());
  if (text == shown_) return;
  shown_ = std::move(text);
  combo_.TextByUser(Meant());
}

std::vector<std::string> ComboBoxPeer::Entries() const {
  std::vector<std::string> entries;
  const auto count = Send(CB_GETCOUNT);
  for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
    std::wstring text(static_cast<std::size_t>(Send(CB_GETLBTEXTLEN, i)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()))));
    entries.push_back(platform::Narrow(text));
  }
  return entries;
}

// The field shows the first line of an entry that was picked, and the whole of it is meant.
std::string ComboBoxPeer::Meant() const {
  const auto picked = static_cast<int>(Send(CB_GETCURSEL));
  if (picked < 0 || picked >= combo_.ListCount()) return shown_;
  const auto& entry = combo_.List(picked);
  return entry.substr(0, entry.find_first_of("\r\n")) == shown_ ? entry : shown_;
}

LRESULT ComboBoxPeer::Handle(const Message& message) {
  if (FillsList(message.id) && !applying_) filledByOthers_ = true;
  return ControlPeer::Handle(message);
}

}  // namespace windows
