#include "platform/simulated/peers/ControlPeer.h"

#include <algorithm>
#include <sstream>

#include "runtime/Buttons.h"
#include "runtime/ComboBox.h"
#include "runtime/Form.h"
#include "runtime/HScrollBar.h"
#include "runtime/ListBox.h"
#include "runtime/TextBox.h"

namespace simulated {
namespace {

using velmaro::Change;

template <class List>
void WriteRows(std::ostream& text, const List& list) {
  for (int row = 0; row < list.ListCount(); ++row) text << list.List(row) << '\n';
}

// One side of what a model holds, as text; empty where it has no such side.
std::string Side(const velmaro::Control& control, Change what) {
  std::ostringstream text;
  const auto& at = control.At();
  if (what == Change::Bounds) text << at.Left << ' ' << at.Top << ' ' << at.Width << ' ' << at.Height;
  if (what == Change::Caption) text << control.Caption();
  if (what == Change::Visible) text << control.Visible();
  if (what == Change::Enabled) text << control.Enabled();
  if (what == Change::ToolTip) text << control.ToolTipText();
  if (const auto* button = dynamic_cast<const velmaro::CommandButton*>(&control))
    if (what == Change::Keys) text << button->Cancel();
  if (const auto* option = dynamic_cast<const velmaro::OptionButton*>(&control))
    if (what == Change::Value) text << option->Value();
  if (const auto* bar = dynamic_cast<const velmaro::HScrollBar*>(&control)) {
    if (what == Change::Value) text << bar->Value();
    if (what == Change::Range) text << bar->Max();
  }
  if (const auto* box = dynamic_cast<const velmaro::TextBox*>(&control))
    if (what == Change::Text) text << box->Text();
  if (const auto* combo = dynamic_cast<const velmaro::ComboBox*>(&control)) {
    if (what == Change::Text) text << combo->Text();
    if (what == Change::Rows) WriteRows(text, *combo);
  }
  if (const auto* list = dynamic_cast<const velmaro::ListBox*>(&control))
    if (what == Change::Rows) WriteRows(text << list->TopIndex() << '\n', *list);
  return text.str();
}

}  // namespace

ControlPeer::ControlPeer(velmaro::Control& control) : control_(control) {
  desktop_.controls[handle_] = &control;
  for (const auto side : {Change::Bounds, Change::Caption, Change::Visible, Change::Enabled, Change::ToolTip,
                          Change::Value, Change::Range, Change::Rows, Change::Text, Change::Keys})
    Show(side);
  const auto* container = control.Parent();
  const bool tooLate = std::ranges::any_of(control.Owner().Controls(), [&](const auto* other) {
    return other->Peer() && other->Parent() == container && other->TabIndex() > control.TabIndex();
  });
  if (tooLate || (container && !container->Peer())) desktop_.misuse.push_back("a control was made out of its order");
}

ControlPeer::~ControlPeer() { desktop_.controls.erase(handle_); }

void ControlPeer::Apply(Change what) {
  ++told_[what];
  Show(what);
  if (desktop_.refusedChanges.contains(what)) throw velmaro::RuntimeError("the control refuses");
}

void ControlPeer::Show(Change what) {
  const Deaf deaf(*this);
  shown_[what] = Side(control_, what);
  // New rows and a new text come with the selection that the model gives them.
  const auto* list = dynamic_cast<const velmaro::ListBox*>(&control_);
  if (list && (what == Change::Rows || what == Change::ListIndex)) row_ = list->ListIndex();
  const auto* box = dynamic_cast<const velmaro::TextBox*>(&control_);
  if (box && (what == Change::Text || what == Change::Selection)) caret_ = {box->SelStart(), box->SelLength()};
}

void ControlPeer::Read() {
  if (deaf_) return;
  if (auto* list = dynamic_cast<velmaro::ListBox*>(&control_)) list->SelectedByUser(row_);
  if (auto* combo = dynamic_cast<velmaro::ComboBox*>(&control_)) combo->TextByUser(shown_[Change::Text]);
  auto* box = dynamic_cast<velmaro::TextBox*>(&control_);
  if (!box) return;
  const Deaf deaf(*this);
  box->TextByUser(shown_[Change::Text]);
  box->SelectionByUser(caret_.first, caret_.second);
}

bool ControlPeer::IsUpToDate() {
  const Deaf deaf(*this);
  // A model that has not asked yet need not know of what was typed.
  return std::ranges::all_of(shown_, [&](const auto& side) {
    return side.first == Change::Text || side.second == Side(control_, side.first);
  });
}

void ControlPeer::TakeText(const std::string& text, std::size_t caret) {
  shown_[Change::Text] = text;
  caret_ = {caret, 0};
  if (auto* box = dynamic_cast<velmaro::TextBox*>(&control_)) box->TextByUser(text);
}

void ControlPeer::TakeTop(int row) {
  const Deaf deaf(*this);
  dynamic_cast<velmaro::ListBox&>(control_).ScrolledByUser(row);
  shown_[Change::Rows] = Side(control_, Change::Rows);
}

int ControlPeer::Told(Change what) const {
  const auto at = told_.find(what);
  return at == told_.end() ? 0 : at->second;
}

ControlPeer& PeerOf(const velmaro::Control& control) { return dynamic_cast<ControlPeer&>(*control.Peer()); }

int Told(const velmaro::Control& control, Change what) { return control.Peer() ? PeerOf(control).Told(what) : 0; }

}  // namespace simulated
