#include "platform/windows/peers/CommandButtonPeer.h"

#include "platform/windows/ground/Codepage.h"

namespace windows {
namespace {

// Pixels at 96 dots an inch: a picture, the room above it, and the edge that a back colour leaves free.
constexpr int PictureSize = 32;
constexpr int PictureMargin = 3;
constexpr int Edge = 3;

OwnedImages ImagesOf(velmaro::Picture picture, int pixels) {
  const auto icon = LoadPicture(picture, pixels);
  return OwnedImages(ImagesOfIcon(icon.get(), pixels));
}

}  // namespace

CommandButtonPeer::CommandButtonPeer(velmaro::CommandButton& button)
    : ControlPeer(button, {.windowClass = L"BUTTON",
                           .style = static_cast<DWORD>(button.Default() ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON),
                           .takesKeyboard = true}),
      button_(button) {
  ShowPicture();
}

void CommandButtonPeer::Rescale() {
  ControlPeer::Rescale();
  ShowPicture();
}

void CommandButtonPeer::ShowPicture() {
  if (!button_.Graphical() || button_.Picture() == velmaro::Picture::None) return;
  const auto scale = Form().Scale();
  auto images = ImagesOf(button_.Picture(), scale.Scaled(PictureSize));
  BUTTON_IMAGELIST list{images.get(), {0, scale.Scaled(PictureMargin), 0, 0}, BUTTON_IMAGELIST_ALIGN_TOP};
  Send(BCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(&list));
  images_ = std::move(images);
}

std::optional<LRESULT> CommandButtonPeer::Notified(const Message& message) {
  if (message.id == WM_COMMAND) {
    if (HIWORD(message.wParam) == BN_CLICKED) button_.RaiseClick();
    return 0;
  }
  if (message.id == WM_NOTIFY && reinterpret_cast<const NMHDR*>(message.lParam)->code == NM_CUSTOMDRAW &&
      HasBackColor())
    return Draw(*reinterpret_cast<const NMCUSTOMDRAW*>(message.lParam));
  return ControlPeer::Notified(message);
}

// The button has drawn its frame when it comes to its text: the colour and the text go inside.
LRESULT CommandButtonPeer::Draw(const NMCUSTOMDRAW& drawing) const {
  if (drawing.dwDrawStage != CDDS_PREPAINT) return CDRF_DODEFAULT;
  auto inside = drawing.rc;
  const int edge = Form().Scale().Scaled(Edge);
  ::InflateRect(&inside, -edge, -edge);
  ::FillRect(drawing.hdc, &inside, Form().BrushFor(button_.BackColor()));
  if (drawing.uItemState & CDIS_SELECTED) ::OffsetRect(&inside, 1, 1);
  const Selected font(drawing.hdc, reinterpret_cast<HFONT>(Send(WM_GETFONT)));
  ::SetBkMode(drawing.hdc, TRANSPARENT);
  const bool disabled = drawing.uItemState & CDIS_DISABLED;
  ::SetTextColor(drawing.hdc, disabled ? ::GetSysColor(COLOR_GRAYTEXT) : ToNative(button_.ForeColor()));
  const bool plain = ::SendMessageW(Window(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL;
  const auto text = platform::Widen(button_.Caption(), platform::Nul::Escaped);
  ::DrawTextW(drawing.hdc, text.c_str(), static_cast<int>(text.size()), &inside,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | (plain ? DT_HIDEPREFIX : 0U));
  if ((drawing.uItemState & CDIS_FOCUS) && !(::SendMessageW(Window(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS))
    ::DrawFocusRect(drawing.hdc, &inside);
  return CDRF_SKIPDEFAULT;
}

}  // namespace windows
