#include "platform/windows/peers/ListBoxPeer.h"

#include <algorithm>

#include "platform/windows/ground/Codepage.h"

namespace windows {
namespace {

// Switches a window's drawing off for a while and draws it anew once at the end. A hidden window is left alone: the
// switch would show it.
class Undrawn {
 public:
  explicit Undrawn(HWND window) : window_(window), shows_(::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) {
    if (shows_) ::SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  }
  Undrawn(const Undrawn&) = delete;
  Undrawn& operator=(const Undrawn&) = delete;
  ~Undrawn() {
    if (!shows_) return;
    ::SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
  }

 private:
  HWND window_;
  bool shows_;
};

bool FillsList(UINT message) {
  switch (message) {
    case LB_ADDSTRING:
    case LB_INSERTSTRING:
    case LB_DELETESTRING:
    case LB_RESETCONTENT:
    case LB_SETITEMDATA:
    case LB_DIR:
    case LB_ADDFILE:
      return true;
    default:
      return false;
  }
}

}  // namespace

ListBoxPeer::ListBoxPeer(velmaro::ListBox& list)
    : ControlPeer(list, {.windowClass = L"LISTBOX",
                         .style = WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | LBS_USETABSTOPS |
                                  LBS_HASSTRINGS,
                         .extendedStyle = WS_EX_CLIENTEDGE,
                         .takesKeyboard = true}),
      list_(list) {
  Apply(velmaro::Change::Rows);
}

void ListBoxPeer::Apply(velmaro::Change what) {
  // What the window shows while it is brought up to date is nobody's choice.
  applying_ = true;
  if (what == velmaro::Change::Rows)
    Refill();
  else if (what == velmaro::Change::ListIndex)
    Select();
  else
    ControlPeer::Apply(what);
  applying_ = false;
}

// Other programs, such as a screen reader, select and fill without a word.
void ListBoxPeer::Read() {
  if (std::exchange(applying_, true)) return;
  if (std::exchange(filledByOthers_, false)) ReadRows();
  const int index = RowIndex();
  list_.SelectedByUser(index < list_.ListCount() ? index : -1);
  applying_ = false;
}

void ListBoxPeer::ReadRows() {
  std::vector<velmaro::ListBox::Row> rows;
  const auto count = std::min<LRESULT>(Send(LB_GETCOUNT), velmaro::ListBox::MaxRows);
  shown_.clear();
  for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
    std::wstring text(static_cast<std::size_t>(Send(LB_GETTEXTLEN, i)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(Send(LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()))));
    shown_.push_back(platform::Narrow(text));
    rows.push_back({.text = shown_.back(), .data = static_cast<std::int32_t>(Send(LB_GETITEMDATA, i))});
  }
  list_.RowsByUser(std::move(rows));
}

void ListBoxPeer::Rescale() {
  ControlPeer::Rescale();
  KeepExtent();
}

void ListBoxPeer::Refill() {
  // A refresh that brings nothing new leaves the picture as it is.
  if (std::exchange(filledByOthers_, false) || !StandsAsShown()) {
    const Undrawn undrawn(Window());
    Send(LB_RESETCONTENT);
    AddRows();
    KeepExtent();
    Select();
  }
  SetData();
}

bool ListBoxPeer::StandsAsShown() const {
  if (list_.ListCount() != static_cast<int>(shown_.size())) return false;
  if (RowIndex() != list_.ListIndex() || Send(LB_GETTOPINDEX) != 0) return false;
  for (int i = 0; i < list_.ListCount(); ++i)
    if (list_.List(i) != shown_[static_cast<std::size_t>(i)]) return false;
  return true;
}

void ListBoxPeer::AddRows() {
  shown_.clear();
  std::size_t bytes = 0;
  for (int i = 0; i < list_.ListCount(); ++i) {
    shown_.push_back(list_.List(i));
    bytes += (shown_.back().size() + 1) * sizeof(wchar_t);
  }
  Send(LB_INITSTORAGE, shown_.size(), static_cast<LPARAM>(bytes));
  for (const auto& row : shown_)
    Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(platform::Widen(row, platform::Nul::Escaped).c_str()));
}

void ListBoxPeer::SetData() const {
  for (int i = 0; i < list_.ListCount(); ++i) Send(LB_SETITEMDATA, static_cast<WPARAM>(i), list_.ItemData(i));
}

// A row that is wider than the list can be brought into view by scrolling sideways.
void ListBoxPeer::KeepExtent() {
  const auto context = ::GetDC(Window());
  {
    const Selected font(context, reinterpret_cast<HFONT>(Send(WM_GETFONT)));
    int widest = 0;
    for (const auto& row : shown_) {
      const auto text = platform::Widen(row, platform::Nul::Escaped);
      const auto extent = ::GetTabbedTextExtentW(context, text.c_str(), static_cast<int>(text.size()), 0, nullptr);
      widest = std::max(widest, static_cast<int>(LOWORD(extent)));
    }
    Send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + Form().Scale().Scaled(4)));
  }
  ::ReleaseDC(Window(), context);
}

void ListBoxPeer::Select() { Send(LB_SETCURSEL, static_cast<WPARAM>(static_cast<LONG_PTR>(list_.ListIndex()))); }

std::optional<LRESULT> ListBoxPeer::Notified(const Message& message) {
  if (message.id != WM_COMMAND) return ControlPeer::Notified(message);
  if (HIWORD(message.wParam) == LBN_DBLCLK) list_.RaiseDblClick();
  return 0;
}

LRESULT ListBoxPeer::Handle(const Message& message) {
  if (FillsList(message.id) && !applying_) filledByOthers_ = true;
  return ControlPeer::Handle(message);
}

}  // namespace windows
