#include "desktop/formSplash.h"

#include "desktop/Credits.h"
#include "platform/shell32.h"
#include "platform/user32.h"

namespace velmaro {
namespace {

constexpr Color White = Rgb(255, 255, 255);
constexpr Color Black = Rgb(0, 0, 0);

}  // namespace

formSplash::formSplash()
    : Form({.ClientWidth = 6480,
            .ClientHeight = 3915,
            .BorderStyle = velmaro::BorderStyle::None,
            .MinButton = false,
            .MaxButton = false,
            .ShowInTaskbar = false,
            .StartUpPosition = velmaro::StartUpPosition::CenterScreen,
            .BackColor = Black}),
      Timer1(*this, {.Interval = 1200}),
      Picture1(*this, {.At = {0, 345, 6480, 3090}, .BackColor = SystemColor::Window}),
      lblName(Picture1, {.Caption = "Velmaro " VELMARO_RELEASE,
                         .At = {300, 360, 3780, 1185},
                         .Font = {.Name = "Arial", .Size = 24},
                         .BackColor = White,
                         .ForeColor = Rgb(0, 0, 128)}),
      Line1(Picture1, {.At = {1500, 1440, 4950, 15}, .ForeColor = Rgb(255, 0, 0)}, 2),
      Label6(Picture1,
             {.Caption = "Change Process Priority, Free System Resources and Task Killer",
              .At = {270, 1575, 6075, 285},
              .BackColor = White,
              .ForeColor = SystemColor::WindowText},
             {.Alignment = Alignment::Right}),
      lblProgrammers(Picture1,
                     {.Caption = credits::Programmers,
                      .At = {2310, 1800, 4035, 255},
                      .Visible = false,
                      .BackColor = White,
                      .ForeColor = Rgb(128, 128, 128)},
                     {.Alignment = Alignment::Right}),
      btnOK(Picture1,
            {.Caption = "OK", .At = {5055, 2475, 1305, 375}, .TabIndex = 0, .Visible = false, .BackColor = White},
            {.Cancel = true, .Graphical = true}),
      lblHome(*this,
              {.Caption = credits::HomePage,
               .At = {4335, 3555, 2025, 255},
               .Font = {.Name = "MS Sans Serif", .Underline = true},
               .BackColor = Black,
               .ForeColor = Rgb(96, 128, 255),
               .ToolTipText = credits::HomePage},
              {.Pointer = velmaro::Pointer::Hand}),
      Label3(*this, {.Caption = credits::Thanks,
                     .At = {60, 3495, 3990, 315},
                     .Font = {.Name = "MS Sans Serif", .Size = 12},
                     .BackColor = Black,
                     .ForeColor = Rgb(255, 255, 0)}) {
  Timer1.Tick = [this] { Timer1_Timer(); };
  btnOK.Click = [this] { btnOK_Click(); };
  lblHome.Click = [this] { lblHome_Click(); };
}

void formSplash::Initialize() {
  Timer1.SetEnabled(false);
  lblProgrammers.SetVisible(true);
  btnOK.SetVisible(true);
}

void formSplash::btnOK_Click() { UnloadForm(*this); }

void formSplash::Timer1_Timer() { UnloadForm(*this); }

void formSplash::lblHome_Click() {
  platform::ShellExecuteA(0, "Open", credits::HomePage, "", "", platform::SW_SHOWNORMAL);
}

}  // namespace velmaro
