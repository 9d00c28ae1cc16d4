#include "launcher/formLauncher.h"

#include <charconv>

#include "desktop/Credits.h"
#include "desktop/modFiles.h"
#include "launcher/Settings.h"
#include "mainform/formVelmaro.h"
#include "runtime/Application.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

constexpr int HistoryPlaces = 10;

// The index that a stored text stands for, -1 for a text that is no number or no index.
int PriorityIndex(const std::string& stored) {
  const auto text = Trim(stored);
  int index = -1;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), index);
  return read.ec == std::errc() && read.ptr == text.data() + text.size() && index < 4 ? index : -1;
}

}  // namespace

formLauncher::formLauncher()
    : Form({.Caption = "Velmaro Launcher",
            .ClientWidth = 6570,
            .ClientHeight = 2370,
            .BorderStyle = velmaro::BorderStyle::FixedToolWindow,
            .MinButton = false,
            .MaxButton = false,
            .ShowInTaskbar = false}),
      Image1(*this, {.At = {60, 180, 480, 480}, .Picture = velmaro::Picture::App}),
      Label1(
          *this,
          {.Caption = "Type the name of the program that you want to run", .At = {705, 240, 4500, 525}, .TabIndex = 1}),
      cmbRun(*this, {.At = {705, 555, 5640, 315},
                     .TabIndex = 0,
                     .BackColor = SystemColor::Window,
                     .ForeColor = SystemColor::WindowText,
                     .AccessibleName = Label1.Caption()}),
      Frame1(*this, {.Caption = "Priority", .At = {120, 1005, 2175, 1320}, .TabIndex = 5}),
      optPriority{{{Frame1, {.Caption = "&Real Time", .At = {150, 240, 1770, 255}, .TabIndex = 6}},
                   {Frame1, {.Caption = "&High", .At = {150, 495, 1770, 255}, .TabIndex = 7}},
                   {Frame1, {.Caption = "&Normal", .At = {150, 750, 1770, 255}, .TabIndex = 8}, {.Value = true}},
                   {Frame1, {.Caption = "&Idle", .At = {150, 1005, 1770, 255}, .TabIndex = 9}}}},
      btnOK(*this, {.Caption = "OK", .At = {2820, 1080, 1095, 405}, .TabIndex = 2}, {.Default = true}),
      btnCancel(*this, {.Caption = "Cancel", .At = {3945, 1080, 1155, 405}, .TabIndex = 3}, {.Cancel = true}),
      btnBrowse(*this, {.Caption = "&Browse...", .At = {5295, 1080, 1020, 405}, .TabIndex = 4}),
      lblCredits(*this, {.Caption = credits::OneLine,
                         .At = {4695, 2085, 2145, 195},
                         .TabIndex = 10,
                         .Font = {.Name = "Arial", .Underline = true},
                         .ForeColor = Rgb(0, 0, 255),
                         .ToolTipText = credits::HomePage}) {
  Load = [this] { Form_Load(); };
  Unload = [this](bool&) { Form_Unload(); };
  btnOK.Click = [this] { btnOK_Click(); };
  btnCancel.Click = [this] { btnCancel_Click(); };
  btnBrowse.Click = [this] { btnBrowse_Click(); };
  lblCredits.Click = [this] { lblCredits_Click(); };
}

void formLauncher::Form_Load() {
  if (const auto index = PriorityIndex(GetSetting("LastPriority", "0")); index >= 0)
    optPriority[static_cast<std::size_t>(index)].SetValue(true);
  cmbRun.SetText(GetSetting("LastRun"));
  for (int i = 1; i <= HistoryPlaces; ++i) {
    auto command = GetSetting("LastRun" + std::to_string(i));
    if (command.empty()) break;
    cmbRun.AddItem(std::move(command));
  }
}

void formLauncher::btnBrowse_Click() {
  std::string filter = "Applications|*.exe|All files (*.*)|*.*";
  if (auto path = ShowOpenDialog(*this, filter, "Browse", ""); !path.empty()) cmbRun.SetText(std::move(path));
}

void formLauncher::Form_Unload() {
  int index = 0;
  while (index < 3 && !optPriority[static_cast<std::size_t>(index)].Value()) ++index;
  SaveSetting("LastPriority", std::to_string(index));
}

void formLauncher::btnCancel_Click() { UnloadForm(*this); }

void formLauncher::lblCredits_Click() { ShowCreditsBox(); }

void formVelmaro::mnuFileRun_Click() { App().Default<formLauncher>().ShowModal(this); }

void formVelmaro::btnLaunch_Click() { mnuFileRun_Click(); }

void formVelmaro::Form_DropFiles(const std::vector<std::string>& Files) {
  auto& launcher = App().Default<formLauncher>();
  LoadForm(launcher);
  launcher.cmbRun.SetText(Files.front());
  launcher.ShowModal(this);
}

}  // namespace velmaro
