#include "platform/simulated/User.h"

#include <stdexcept>

#include "platform/simulated/peers/ControlPeer.h"
#include "platform/simulated/peers/FormWindow.h"

namespace simulated {
namespace {

using velmaro::Control;
using velmaro::Form;
using velmaro::MouseButton::Left;

[[noreturn]] void Refuse(const std::string& what, const std::string& why) {
  throw std::logic_error("the user can't touch \"" + what + "\": " + why);
}

// The window of a form that can be touched, minimized or not; it comes to the front.
FormWindow& Reach(Form& form) {
  auto& desktop = TheDesktop();
  desktop.CompareWithModels();
  auto* window = WindowFor(form);
  if (!window || !window->window.visible) Refuse(form.Caption(), "it is not on the screen");
  if (!desktop.openBoxes.empty()) Refuse(form.Caption(), "a message box stands before it");
  if (window->Blocked()) Refuse(form.Caption(), "a modal form stands before it");
  desktop.anotherProgramInFront = false;
  window->ToFront();
  return *window;
}

FormWindow& ReachInside(Form& form) {
  auto& window = Reach(form);
  if (!window.TakesInput()) Refuse(form.Caption(), "it is minimized");
  return window;
}

std::string NameOf(const Control& control) {
  const auto& at = control.At();
  return !control.Caption().empty() ? control.Caption()
                                    : "control at " + std::to_string(at.Left) + ", " + std::to_string(at.Top);
}

FormWindow& Reach(Control& control) {
  auto& window = ReachInside(control.Owner());
  for (const auto* part = &control; part; part = part->Parent()) {
    if (!part->Visible()) Refuse(NameOf(control), "it does not show");
    if (!part->Enabled()) Refuse(NameOf(control), "it is disabled");
  }
  if (control.Width() <= 0 || control.Height() <= 0) Refuse(NameOf(control), "it has no size");
  return window;
}

void MouseUp(Control& control, int button) {
  control.RaiseMouseUp(button, 0, control.Width() / 2, control.Height() / 2);
}

// What a MouseUp did may have ended the form, and then nothing follows it.
bool Lives(const Control& control) { return control.Peer() && !control.Owner().Unloaded(); }

void CheckRow(const velmaro::ListBox& list, int row) {
  if (row < -1 || row >= list.ListCount()) Refuse(NameOf(list), "it has no row " + std::to_string(row));
}

template <class Wanted>
Wanted* ControlWithFocus(const FormWindow& window) {
  auto* control = dynamic_cast<Wanted*>(window.focus);
  return control && Shows(*control) && control->Enabled() ? control : nullptr;
}

// The button that a key presses, null for none.
velmaro::CommandButton* ButtonFor(int keyCode, const FormWindow& window) {
  auto* focused = ControlWithFocus<velmaro::CommandButton>(window);
  const auto* text = ControlWithFocus<velmaro::TextBox>(window);
  switch (keyCode) {
    case velmaro::Key::Space:
      return focused;
    case velmaro::Key::Escape:
      return window.form.CancelButton();
    case velmaro::Key::Return:
      if (text && text->MultiLine()) return nullptr;
      return focused ? focused : window.form.DefaultButton();
    default:
      return nullptr;
  }
}

void PressKey(FormWindow& window, int keyCode, int shift) {
  if (auto* entry = velmaro::FindShortcut(window.form, {keyCode, shift})) return entry->RaiseClick();
  auto* button = shift == 0 ? ButtonFor(keyCode, window) : nullptr;
  if (button) button->RaiseClick();
}

}  // namespace

bool Shows(const Form& form) {
  const auto* window = WindowFor(form);
  return window && window->window.visible;
}

bool Shows(const Control& control) {
  for (const auto* part = &control; part; part = part->Parent())
    if (!part->Visible()) return false;
  return Shows(control.Owner());
}

Form& FrontForm() {
  if (auto* form = TheDesktop().ActiveForm()) return *form;
  throw std::logic_error("no form of the program has the keyboard");
}

void Click(Control& control) {
  Reach(control);
  MouseUp(control, Left);
  if (Lives(control)) control.RaiseClick();
}

void Press(velmaro::CommandButton& button) {
  Reach(button).focus = &button;
  Click(button);
}

void Press(velmaro::OptionButton& button) {
  Reach(button).focus = &button;
  MouseUp(button, Left);
  if (Lives(button)) button.SetValue(true);
}

void Press(const std::string& caption) {
  for (auto* control : FrontForm().Controls())
    if (auto* button = dynamic_cast<velmaro::CommandButton*>(control); button && button->Caption() == caption)
      return Press(*button);
  Refuse(caption, "the form in front has no such button");
}

void RightPress(Control& control, int button) {
  Reach(control);
  MouseUp(control, button);
}

void Select(velmaro::ListBox& list, int row) {
  Reach(list).focus = &list;
  CheckRow(list, row);
  if (row >= 0) {
    PeerOf(list).TakeRow(row);
    list.RaiseClick();
  }
  if (Lives(list)) MouseUp(list, Left);
}

void DoubleClick(velmaro::ListBox& list, int row) {
  Select(list, row);
  CheckRow(list, row);
  if (row >= 0) PeerOf(list).TakeRow(row);
  list.RaiseDblClick();
  if (Lives(list)) MouseUp(list, Left);
}

void Scroll(velmaro::ListBox& list, int top) {
  Reach(list);
  PeerOf(list).TakeTop(top);
}

int RowWith(const velmaro::ListBox& list, const std::string& text) {
  for (int row = 0; row < list.ListCount(); ++row)
    if (list.List(row).find(text) != std::string::npos) return row;
  Refuse(text, "no row of the list holds it");
}

void Choose(velmaro::Menu& entry) {
  ReachInside(entry.Owner());
  const auto* top = &entry;
  while (top->Parent()) top = top->Parent();
  if (!top->Visible()) Refuse(entry.Caption(), "its menu is not on the bar");
  if (!CanChoose(entry, *top)) Refuse(entry.Caption(), "its menu does not offer it");
  entry.RaiseClick();
}

void TypeKey(Form& form, int keyCode, int shift) {
  ReachInside(form);
  form.RaiseKeyDown(keyCode, shift);
  // What the key did may have ended the window, or brought another one before it.
  if (auto* window = WindowFor(form); window && window->TakesInput()) PressKey(*window, keyCode, shift);
  if (auto* window = WindowFor(form); window && window->TakesInput()) form.RaiseKeyUp(keyCode, shift);
}

void TypeText(velmaro::TextBox& box, const std::string& text) {
  Reach(box).focus = &box;
  const auto start = box.SelStart();
  auto whole = box.Text();
  whole.replace(start, box.SelLength(), text);
  PeerOf(box).TakeText(whole, start + text.size());
}

void TypeText(velmaro::ComboBox& box, const std::string& text) {
  Reach(box).focus = &box;
  PeerOf(box).TakeText(text);
}

void MoveCaret(velmaro::TextBox& box, std::size_t start, std::size_t length) {
  Reach(box).focus = &box;
  PeerOf(box).TakeCaret(start, length);
}

void Reply(const std::string& text) {
  auto& form = FrontForm();
  for (auto* control : form.Controls()) {
    auto* box = dynamic_cast<velmaro::TextBox*>(control);
    if (!box) continue;
    MoveCaret(*box, 0, box->Text().size());
    TypeText(*box, text);
    return TypeKey(form, velmaro::Key::Return);
  }
  Refuse(form.Caption(), "it asks for no text");
}

void PickEntry(velmaro::ComboBox& box, int index) {
  Reach(box).focus = &box;
  if (index < 0 || index >= box.ListCount()) Refuse(NameOf(box), "it has no entry " + std::to_string(index));
  PeerOf(box).TakeText(std::string(box.List(index)));
  box.RaiseClick();
}

void Slide(velmaro::HScrollBar& bar, int value) {
  Reach(bar).focus = &bar;
  if (value < 0 || value > bar.Max()) Refuse("scroll bar", "it has no value " + std::to_string(value));
  bar.SetValue(value);
}

void CloseBox(Form& form) {
  if (form.Args().BorderStyle == velmaro::BorderStyle::None) Refuse(form.Caption(), "it has no close box");
  Reach(form);
  form.CloseByUser();
}

void ResizeWindow(Form& form, velmaro::Twips width, velmaro::Twips height) {
  auto& window = ReachInside(form);
  const bool fixed = form.Args().BorderStyle != velmaro::BorderStyle::Sizable;
  if (fixed || form.WindowState() != velmaro::WindowState::Normal) Refuse(form.Caption(), "its frame does not move");
  window.SizeTo(width, height);
}

void ImposeSize(Form& form, velmaro::Twips width, velmaro::Twips height) {
  ReachInside(form).ImposeSize(width, height);
}

void Minimize(Form& form) {
  if (!form.Args().MinButton) Refuse(form.Caption(), "it can't be minimized");
  Reach(form).SetState(velmaro::WindowState::Minimized);
}

void Maximize(Form& form) {
  if (!form.Args().MaxButton) Refuse(form.Caption(), "it can't be maximized");
  Reach(form).SetState(velmaro::WindowState::Maximized);
}

void Restore(Form& form) { Reach(form).SetState(velmaro::WindowState::Normal); }

void Activate(Form& form) { ReachInside(form); }

void Drop(Form& form, const std::vector<std::string>& files) {
  ReachInside(form);
  if (!form.DropFiles) Refuse(form.Caption(), "it takes no files");
  form.RaiseDropFiles(files);
}

}  // namespace simulated
