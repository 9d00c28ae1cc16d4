#pragma once

#include "platform/linux/qt/ControlPeer.h"
#include "platform/linux/qt/ShownText.h"
#include "runtime/ComboBox.h"
#include "runtime/TextBox.h"

namespace onlinux {

// A field of text. What it shows is not the text itself where that holds bytes that no field can show.
class FieldPeer : public ControlPeer {
 public:
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  FieldPeer(velmaro::TextBox& box, QWidget* widget) : ControlPeer(box, widget), box_(box) {}
  void ShowColors() override { ShowColorsAs(QPalette::Text, QPalette::Base); }
  virtual void ShowContents() = 0;
  virtual void ShowSelection() = 0;

  velmaro::TextBox& box_;
  ShownText text_;
};

// A field of one line.
class SingleLinePeer : public FieldPeer {
 public:
  explicit SingleLinePeer(velmaro::TextBox& box);

 private:
  void ShowContents() override;
  void ShowSelection() override;
  void NoteSelection();
};

// A field of many lines.
class ManyLinesPeer : public FieldPeer {
 public:
  explicit ManyLinesPeer(velmaro::TextBox& box);

 private:
  void ShowContents() override;
  void ShowSelection() override;
  void NoteText();
  void NoteSelection();

  int changedAt_ = 0;
};

class ComboBoxPeer : public ControlPeer {
 public:
  explicit ComboBoxPeer(velmaro::ComboBox& box);
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  void ShowColors() override { ShowColorsAs(QPalette::Text, QPalette::Base); }

 private:
  void ShowEntries();

  velmaro::ComboBox& box_;
};

}  // namespace onlinux
