#pragma once

#include <cstdint>
#include <string>

#include "platform/user32.h"
#include "runtime/Control.h"

namespace velmaro {

// One tooltip window of the platform, tied to one control: a plain tip or a balloon, with a title, an icon and colours
// of its own. The platform shows it by itself while the mouse rests over the control.
class Tooltip {
 public:
  Tooltip() = default;
  Tooltip(const Tooltip&) = delete;
  Tooltip& operator=(const Tooltip&) = delete;

  // Makes the tooltip window, in place of an earlier one; without a control there is none. The result is always false.
  bool Create();

  // 1 for a balloon, any other value for a plain tip; takes effect at the next Create, as do the two below.
  void SetStyle(std::int32_t style) { style_ = style; }
  std::int32_t Style() const { return style_; }
  // The tip stands centred under the control.
  void SetCentered(bool centered) { centered_ = centered; }
  bool Centered() const { return centered_; }
  // The control that the tip belongs to, null for none.
  void SetParentControl(const Control* control) { parentControl_ = control; }
  const Control* ParentControl() const { return parentControl_; }

  // The title line's icon, 0 for none, 1 for information. A live window takes it only beside a title.
  void SetIcon(std::int32_t icon);
  std::int32_t Icon() const { return icon_; }
  // The title line. A live window takes it only beside an icon.
  void SetTitle(std::string title);
  const std::string& Title() const { return title_; }
  // Colours as RGB values; 0 at Create stands for the platform's own.
  void SetForeColor(Color color);
  Color ForeColor() const { return foreColor_; }
  void SetBackColor(Color color);
  Color BackColor() const { return backColor_; }
  void SetTipText(std::string text);
  const std::string& TipText() const { return toolInfo_.lpszText; }

 private:
  void UpdateTitle();

  Color backColor_ = 0;
  std::string title_;
  Color foreColor_ = 0;
  const Control* parentControl_ = nullptr;
  std::int32_t icon_ = 0;
  bool centered_ = false;
  std::int32_t style_ = 0;
  platform::Owned<platform::WindowHandle, &platform::DestroyWindow> tipWindow_;
  platform::TOOLINFO toolInfo_;
};

}  // namespace velmaro
