#include "platform/windows/peers/PicturePeers.h"

#include <algorithm>

namespace windows {

ImagePeer::ImagePeer(velmaro::Image& image)
    : ControlPeer(image, {.windowClass = L"STATIC", .style = SS_NOTIFY | SS_ICON, .clicksByRelease = true}),
      image_(image) {
  ShowPicture();
}

void ImagePeer::Apply(velmaro::Change what) {
  ControlPeer::Apply(what);
  if (what == velmaro::Change::Bounds) ShowPicture();
}

void ImagePeer::Rescale() {
  ControlPeer::Rescale();
  ShowPicture();
}

void ImagePeer::ShowPicture() {
  if (image_.Picture() == velmaro::Picture::None) return;
  auto icon = LoadPicture(image_.Picture(), Form().Scale().ToPixels(image_.Width()));
  Send(STM_SETICON, reinterpret_cast<WPARAM>(icon.get()));
  icon_ = std::move(icon);
}

LinePeer::LinePeer(velmaro::Line& line)
    // A line that lies flat is as high as it is wide.
    : ControlPeer(line, {.windowClass = L"STATIC", .roomBelow = line.BorderWidth() - 1}), line_(line) {
  // A line is never covered by the foot of a label that it crosses.
  ::SetWindowPos(Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

LRESULT LinePeer::Handle(const Message& message) {
  if (message.id == WM_ERASEBKGND) return TRUE;
  if (message.id != WM_PAINT) return ControlPeer::Handle(message);
  PaintBuffered(Window(), [this](HDC context) { Draw(context); });
  return 0;
}

void LinePeer::Draw(HDC context) const {
  RECT client;
  ::GetClientRect(Window(), &client);
  ::FillRect(context, &client, Form().BrushFor(ContainerColor()));
  const int width = Form().Scale().Scaled(line_.BorderWidth());
  // What is no text need not stand out as much.
  const auto color = IsHighContrast() ? ColorsOf(line_.ForeColor(), ContainerColor()).text : line_.ForeColor();
  const OwnedPen pen(::CreatePen(PS_SOLID, width, ToNative(color)));
  const Selected selected(context, pen.get());
  ::MoveToEx(context, 0, width / 2, nullptr);
  ::LineTo(context, client.right, std::max<int>(width / 2, client.bottom - (width + 1) / 2));
}

}  // namespace windows
