#include "platform/linux/qt/ControlPeer.h"
#include "platform/linux/qt/QtToolkit.h"

namespace onlinux {
namespace {

QColor ToColor(std::uint32_t color) {
  return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF), static_cast<int>(color >> 16 & 0xFF)};
}

QWidget* WidgetOf(platform::WindowHandle control) {
  const auto* peer = dynamic_cast<const ControlPeer*>(FindOwn(control));
  return peer ? &peer->Widget() : nullptr;
}

}  // namespace

Balloon* QtToolkit::FindTip(platform::WindowHandle tip) {
  const auto at = tips_.find(tip);
  return at == tips_.end() ? nullptr : at->second.get();
}

platform::WindowHandle QtToolkit::NewTip(std::uint32_t style) {
  auto tip = std::make_unique<Balloon>();
  tip->Look().balloon = (style & platform::TTS_BALLOON) != 0;
  tips_[++lastTip_] = std::move(tip);
  return lastTip_;
}

bool QtToolkit::EndTip(platform::WindowHandle tip) { return tips_.erase(tip) != 0; }

void QtToolkit::TellTip(platform::WindowHandle window, std::uint32_t message, const platform::TOOLINFO& tool) {
  auto* tip = FindTip(window);
  if (!tip) return;
  tip->Look().text = tool.lpszText;
  if (message == platform::TTM_ADDTOOLA) {
    tip->Look().centered = (tool.uFlags & platform::TTF_CENTERTIP) != 0;
    tip->Watch(WidgetOf(tool.hwnd));
  }
  tip->Changed();
}

void QtToolkit::TellTip(platform::WindowHandle window, std::uint32_t icon, const std::string& title) {
  auto* tip = FindTip(window);
  if (!tip) return;
  tip->Look().icon = icon;
  tip->Look().title = title;
  tip->Changed();
}

void QtToolkit::TellTip(platform::WindowHandle window, std::uint32_t message, std::uint32_t color) {
  auto* tip = FindTip(window);
  if (!tip) return;
  auto& look = tip->Look();
  (message == platform::TTM_SETTIPBKCOLOR ? look.groundColor : look.textColor) = ToColor(color);
  tip->Changed();
}

}  // namespace onlinux
