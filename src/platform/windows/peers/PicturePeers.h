#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/Pictures.h"

namespace windows {

// Shows a picture at the size of its control.
class ImagePeer final : public ControlPeer {
 public:
  explicit ImagePeer(velmaro::Image& image);
  void Apply(velmaro::Change what) override;
  void Rescale() override;

 private:
  void ShowPicture();

  velmaro::Image& image_;
  OwnedIcon icon_;
};

// Draws a straight line.
class LinePeer final : public ControlPeer {
 public:
  explicit LinePeer(velmaro::Line& line);

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  void Draw(HDC context) const;

  velmaro::Line& line_;
};

}  // namespace windows
