#include "editor/formEdit.h"

#include <algorithm>

#include "desktop/Credits.h"
#include "desktop/modFiles.h"
#include "desktop/modRegistry.h"
#include "mainform/formVelmaro.h"
#include "platform/machine.h"
#include "platform/shell32.h"
#include "process/KillLists.h"
#include "runtime/Application.h"
#include "runtime/Boxes.h"
#include "runtime/Files.h"

namespace velmaro {
namespace {

constexpr std::size_t LargestText = 65535;

bool HasMoreCharacters(std::string_view text, std::size_t than) {
  for (; than > 0 && !text.empty(); --than) text.remove_prefix(std::min(platform::CharacterLength(text), text.size()));
  return !text.empty();
}

std::string HelpText() {
  return "Enter a list of executable files that you want to close or terminate\n"
         "when you hit 'Free Resources' button.\n"
         "\n"
         "Example: Antivirus.exe";
}

// What a new list begins with.
constexpr std::string_view AboutKillList =
    "; The kill list: one program to a line, closed by \"Free Resources\" or /k.\n"
    "; Each line ends one running program of that name. Lines that begin with ; are comments.\n";
constexpr std::string_view AboutNoKillList =
    "; The no-kill list: nothing that fits a line here is ever ended by Velmaro.\n"
    "; * stands for any letters, ? for one, # for one digit. A line must fit the end of a program's name.\n";

void EditModally(const std::string& file, std::string_view about, Form& owner) {
  auto& form = App().Default<formEdit>();
  // The box takes the text at once then, and whether it holds it is known before anybody can change it.
  form.Realize();
  if (form.Unloaded()) return;
  form.LoadFile(file);
  if (!platform::ShellTakesEveryFile() && !FileExists(file)) form.Suggest(about);
  form.ShowModal(&owner);
}

}  // namespace

formEdit::formEdit()
    : Form({.Caption = "Settings",
            .ClientWidth = 7830,
            .ClientHeight = 5700,
            .KeyPreview = true,
            .Icon = velmaro::Picture::Editor}),
      txtData(*this,
              {.At = {-15, 0, 7830, 5220},
               .TabIndex = 0,
               .Font = {.Name = "MS Sans Serif", .Size = 9.75F},
               .BackColor = Rgb(255, 254, 225),
               .ForeColor = SystemColor::WindowText,
               .AccessibleName = "Programs on the list, one in each line"},
              {.MultiLine = true, .ScrollBars = true}),
      btnOK(*this, {.Caption = "&OK", .At = {4905, 5265, 1440, 435}, .TabIndex = 1}),
      btnCancel(*this, {.Caption = "&Cancel", .At = {6390, 5265, 1440, 435}, .TabIndex = 2}, {.Cancel = true}),
      btnHelp(*this,
              {.Caption = "?",
               .At = {30, 5310, 375, 345},
               .TabIndex = 3,
               .Font = {.Name = "MS Sans Serif", .Bold = true},
               .BackColor = Rgb(255, 255, 128),
               .AccessibleName = "Help"},
              {.Graphical = true}),
      lblCredits(*this, {.Caption = credits::OneLine,
                         .At = {465, 5370, 2145, 195},
                         .TabIndex = 4,
                         .Font = {.Name = "Arial", .Underline = true},
                         .ForeColor = Rgb(0, 0, 255),
                         .ToolTipText = credits::HomePage}) {
  Load = [this] { Form_Load(); };
  Activate = [this] { Form_Activate(); };
  KeyDown = [this](int keyCode, int shift) { Form_KeyDown(keyCode, shift); };
  Resize = [this] { Form_Resize(); };
  Unload = [this](bool& cancel) { Form_Unload(cancel); };
  QueryEndSession = [this](bool& cancel) { AskToSave(cancel); };
  txtData.Change = [this] { txtData_Change(); };
  btnOK.Click = [this] { btnOK_Click(); };
  btnCancel.Click = [this] { btnCancel_Click(); };
  btnHelp.Click = [this] { btnHelp_Click(); };
  lblCredits.Click = [this] { lblCredits_Click(); };
}

void formEdit::Form_Load() { Tip = std::make_unique<Tooltip>(); }

void formEdit::Form_Activate() {
  if (!Tip) return;
  Tip->SetParentControl(&btnHelp);
  Tip->SetTitle(Caption());
  Tip->SetTipText(HelpText());
  Tip->SetIcon(1);
  Tip->SetStyle(1);
  Tip->SetCentered(false);
  Tip->Create();
}

void formEdit::LoadFile(const std::string& file) {
  EditFile = file;
  FileForm = TextForm::Plain;
  IsRead = !FileExists(file);
  std::string text;
  if (!IsRead) Resume([&] { text = WithinMemory([&] { return ReadText(); }); });
  if (HasMoreCharacters(text, LargestText))
    MsgBox(
        "'" + file + "' exceed the 64KB limit.\r\nIf you save the changes to this file, the content will be truncated.",
        platform::MB_ICONWARNING);
  Show(std::move(text));
  Modified = false;
}

void formEdit::Show(std::string text) {
  bool holds = false;
  Resume([&] { holds = WithinMemory([&] { return txtData.SetText(std::move(text)), true; }); });
  if (holds) return;
  // What the box can't hold is as little read as what memory can't.
  IsRead = false;
  Resume([&] { txtData.SetText({}); });
}

void formEdit::Suggest(std::string_view lines) {
  std::string text;
  for (const char c : lines) {
    if (c == '\n' && !platform::LineFeedEndsLine()) text += '\r';
    text += c;
  }
  const auto end = text.size();
  txtData.SetText(std::move(text));
  txtData.SetSelStart(end);
  Modified = false;
}

std::string formEdit::ReadText() {
  auto bytes = ReadWholeFile(EditFile);
  FormedText read;
  if (FormOf(bytes) != TextForm::Plain)
    read = FromBytes(bytes);
  else if (auto local = platform::FromLocalPage(bytes))
    read = {std::move(*local), TextForm::Local};
  // A file whose bytes would not come back is shown and kept byte by byte.
  if (read.form == TextForm::Plain || ToBytes(read.text, read.form) != bytes)
    read = {std::move(bytes), TextForm::Plain};
  FileForm = read.form;
  IsRead = true;
  return std::move(read.text);
}

void formEdit::Save() {
  if (IsRead) SaveTextFile(EditFile, ToBytes(txtData.Text(), FileForm), 0);
  Modified = false;
}

void formEdit::AskToSave(bool& Cancel) {
  if (!Modified) return;
  constexpr auto question = platform::MB_YESNOCANCEL | platform::MB_ICONQUESTION;
  const auto answer = MsgBox("Do you want to save the changes?", question);
  if (answer == platform::IDYES) Save();
  if (answer == platform::IDCANCEL) Cancel = true;
}

void formEdit::Form_Unload(bool& Cancel) {
  AskToSave(Cancel);
  if (!Cancel) Tip.reset();
}

void formEdit::Form_Resize() {
  if (WindowState() == velmaro::WindowState::Minimized) return;
  Resume([&] { txtData.Move({0, 0, ScaleWidth(), ScaleHeight() - btnOK.Height() - 30}); });
  const auto top = txtData.Height() + 15;
  btnCancel.MoveTo(ScaleWidth() - btnCancel.Width() - 30, top);
  btnOK.MoveTo(btnCancel.Left() - btnCancel.Width() - 60, top);
  btnHelp.MoveTo(30, top + 30);
  lblCredits.MoveTo(btnHelp.Width() + 120, top + 90);
}

void formEdit::txtData_Change() { Modified = true; }

void formEdit::btnOK_Click() {
  Save();
  UnloadForm(*this);
}

void formEdit::btnCancel_Click() { UnloadForm(*this); }

void formEdit::btnHelp_Click() { MsgBox(HelpText(), platform::MB_ICONINFORMATION); }

void formEdit::lblCredits_Click() { ShowCreditsBox(); }

void formVelmaro::mnuEditKillListHere_Click() { EditModally(KillListPath, AboutKillList, *this); }

void formVelmaro::mnuEditNoKillListHere_Click() { EditModally(NoKillListPath, AboutNoKillList, *this); }

}  // namespace velmaro
