#pragma once

#include "platform/linux/qt/ControlPeer.h"
#include "platform/linux/qt/ShownText.h"
#include "runtime/ComboBox.h"
#include "runtime/TextBox.h"

namespace onlinux {

// A field of one line.
class SingleLinePeer : public ControlPeer {
 public:
  explicit SingleLinePeer(velmaro::TextBox& box);
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  void ShowColors() override;

 private:
  void ShowContents();
  void ShowSelection();
  void NoteSelection();

  velmaro::TextBox& box_;
  ShownText text_;
};

// A field of many lines.
class ManyLinesPeer : public ControlPeer {
 public:
  explicit ManyLinesPeer(velmaro::TextBox& box);
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  void ShowColors() override;

 private:
  void ShowContents();
  void ShowSelection();
  void NoteText();
  void NoteSelection();

  velmaro::TextBox& box_;
  ShownText text_;
  int changedAt_ = 0;
};

class ComboBoxPeer : public ControlPeer {
 public:
  explicit ComboBoxPeer(velmaro::ComboBox& box);
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  void ShowColors() override;

 private:
  void ShowEntries();

  velmaro::ComboBox& box_;
};

}  // namespace onlinux
