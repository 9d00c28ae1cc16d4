#pragma once

#include "platform/linux/qt/ControlPeer.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"

namespace onlinux {

class LabelPeer : public ControlPeer {
 public:
  explicit LabelPeer(velmaro::Label& label);

 protected:
  void ShowText() override;
  void ShowColors() override;
  velmaro::Color Ground() const override;

 private:
  velmaro::Label& label_;
};

class PictureBoxPeer : public ControlPeer {
 public:
  explicit PictureBoxPeer(velmaro::PictureBox& box);

 protected:
  void ShowColors() override;
};

class FramePeer : public ControlPeer {
 public:
  explicit FramePeer(velmaro::Frame& frame);

 protected:
  void ShowText() override;

 private:
  velmaro::Frame& frame_;
};

class ImagePeer : public ControlPeer {
 public:
  explicit ImagePeer(velmaro::Image& image);

 protected:
  void ShowText() override;

 private:
  velmaro::Image& image_;
};

class LinePeer : public ControlPeer {
 public:
  explicit LinePeer(velmaro::Line& line);

 protected:
  void ShowText() override;
  void ShowColors() override;

 private:
  velmaro::Line& line_;
};

}  // namespace onlinux
