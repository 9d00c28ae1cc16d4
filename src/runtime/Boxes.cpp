#include "runtime/Boxes.h"

#include "runtime/Application.h"
#include "runtime/Buttons.h"
#include "runtime/Label.h"
#include "runtime/TextBox.h"

namespace velmaro {
namespace {

// The window that asks for one line of text.
class formInput : public Form {
 public:
  formInput(const std::string& prompt, const std::string& title, const std::string& defaultText)
      : Form({.Caption = title,
              .ClientWidth = 5400,
              .ClientHeight = 1530,
              .BorderStyle = velmaro::BorderStyle::FixedToolWindow,
              .MinButton = false,
              .MaxButton = false,
              .ShowInTaskbar = false}),
        lblPrompt(*this, {.Caption = prompt, .At = {120, 120, 3825, 660}}),
        txtReply(*this, {.At = {120, 1095, 5160, 315},
                         .TabIndex = 0,
                         .BackColor = SystemColor::Window,
                         .ForeColor = SystemColor::WindowText,
                         .AccessibleName = prompt}),
        btnOK(*this, {.Caption = "OK", .At = {4065, 120, 1215, 375}, .TabIndex = 1}, {.Default = true}),
        btnCancel(*this, {.Caption = "Cancel", .At = {4065, 570, 1215, 375}, .TabIndex = 2}, {.Cancel = true}) {
    btnOK.Click = [this] {
      reply = txtReply.Text();
      UnloadForm(*this);
    };
    btnCancel.Click = [this] { UnloadForm(*this); };
    txtReply.SetText(defaultText);
    txtReply.SetSelLength(defaultText.size());
  }

  Label lblPrompt;
  TextBox txtReply;
  CommandButton btnOK;
  CommandButton btnCancel;
  std::string reply;
};

}  // namespace

int MsgBox(const std::string& text, std::uint32_t flags, const std::string& title) {
  return platform::MessageBoxA(text, title.empty() ? Application::Title : title, flags);
}

std::string InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText) {
  auto& form = App().New<formInput>(prompt, title, defaultText);
  form.ShowModal(App().ActiveForm());
  return form.reply;
}

}  // namespace velmaro
