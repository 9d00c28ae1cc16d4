#include "mainform/formVelmaro.h"

#include "desktop/Credits.h"

namespace velmaro {

formVelmaro::formVelmaro()
    : Form({.Caption = "Zeld's Velmaro Process",
            .ClientWidth = 7170,
            .ClientHeight = 4110,
            .MinWidth = LeastWidth,
            .MinHeight = LeastHeight,
            .KeyPreview = true,
            .Icon = velmaro::Picture::App}),
      List1(*this, {.At = {30, 420, 7140, 2835},
                    .TabIndex = 0,
                    .BackColor = SystemColor::Window,
                    .ForeColor = SystemColor::WindowText,
                    .AccessibleName = "Processes and windows"}),
      btnVelmaro(
          *this,
          {.Caption = "Velmaro!", .At = {2760, 3270, 1095, 840}, .TabIndex = 1, .Picture = velmaro::Picture::Priority},
          {.Default = true, .Graphical = true}),
      btnLaunch(
          *this,
          {.Caption = "&Launch...", .At = {3855, 3270, 1050, 840}, .TabIndex = 2, .Picture = velmaro::Picture::App},
          {.Graphical = true}),
      btnFreeMem(
          *this,
          {.Caption = "Free &Mem", .At = {4890, 3270, 1050, 840}, .TabIndex = 3, .Picture = velmaro::Picture::Memory},
          {.Graphical = true}),
      btnFree(*this,
              {.Caption = "Free Resources",
               .At = {5925, 3270, 1260, 840},
               .TabIndex = 4,
               .Picture = velmaro::Picture::Resources},
              {.Graphical = true}),
      Option1{
          {{*this, {.Caption = "&All", .At = {45, 30, 780, 360}, .TabIndex = 5}, {.Value = true, .Graphical = true}},
           {*this, {.Caption = "&Normal", .At = {810, 30, 765, 360}, .TabIndex = 6}, {.Graphical = true}},
           {*this, {.Caption = "Hi&gh", .At = {1560, 30, 795, 360}, .TabIndex = 7}, {.Graphical = true}},
           {*this, {.Caption = "Real &Time", .At = {2340, 30, 885, 360}, .TabIndex = 8}, {.Graphical = true}},
           {*this, {.Caption = "&Idle", .At = {3210, 30, 600, 360}, .TabIndex = 9}, {.Graphical = true}},
           {*this, {.Caption = "&Emu", .At = {3795, 30, 615, 360}, .TabIndex = 10}, {.Graphical = true}},
           {*this, {.Caption = "&Hidden", .At = {4485, 30, 795, 360}, .TabIndex = 13}, {.Graphical = true}}}},
      btnRefresh(*this,
                 {.Caption = "&Refresh", .At = {6360, 30, 810, 360}, .TabIndex = 11, .BackColor = Rgb(255, 255, 192)},
                 {.Graphical = true}),
      lblCredits(*this, {.Caption = credits::OneLine,
                         .At = {45, 3600, 2145, 195},
                         .TabIndex = 12,
                         .Font = {.Name = "Arial", .Underline = true},
                         .ForeColor = Rgb(0, 0, 255),
                         .ToolTipText = credits::HomePage}),
      Timer1(*this, {.Interval = 4000}),
      mnuFile(*this, {.Caption = "&File"}),
      mnuFileRun(mnuFile, {.Caption = "Run...", .Shortcut = CtrlKey('R')}),
      mnuFileFreeMem(mnuFile, {.Caption = "Free &Memory..."}),
      mnuFileSep0(mnuFile, {.Caption = "-"}),
      mnuFileKillProcesses(mnuFile, {.Caption = "&Kill Processes", .Shortcut = CtrlKey('K')}),
      mnuFileEditKillList(mnuFile, {.Caption = "&Edit Kill List..."}),
      mnuFileEditNoKillList(mnuFile, {.Caption = "&Edit No Kill List..."}),
      mnuFileSep1(mnuFile, {.Caption = "-"}),
      mnuFileRefresh(mnuFile, {.Caption = "&Refresh", .Shortcut = {Key::F5}}),
      mnuFileAutoRefresh(mnuFile, {.Caption = "&Auto Refresh", .Checked = true}),
      mnuFileSep2(mnuFile, {.Caption = "-"}),
      mnuFileExit(mnuFile, {.Caption = "E&xit"}),
      mnuEdit(*this, {.Caption = "&Edit"}),
      mnuFind(mnuEdit, {.Caption = "&Find...", .Shortcut = CtrlKey('F')}),
      mnuFindNext(mnuEdit, {.Caption = "&Find Next", .Shortcut = {Key::F3}}),
      mnuEditSep0(mnuEdit, {.Caption = "-"}),
      mnuEditKillListHere(mnuEdit, {.Caption = "Edit &Kill List Here..."}),
      mnuEditNoKillListHere(mnuEdit, {.Caption = "Edit N&o Kill List Here..."}),
      mnuOptionsMain(*this, {.Caption = "&Options"}),
      mnuOptions{{{mnuOptionsMain, {.Caption = "Normal", .Shortcut = CtrlKey('N')}},
                  {mnuOptionsMain, {.Caption = "High", .Shortcut = CtrlKey('H')}},
                  {mnuOptionsMain, {.Caption = "Real Time", .Shortcut = CtrlKey('T'), .Checked = true}},
                  {mnuOptionsMain, {.Caption = "Idle", .Shortcut = CtrlKey('I')}},
                  {mnuOptionsMain, {.Caption = "Terminate Process", .Shortcut = {Key::Delete}}}}},
      mnuWOptionsMain(*this, {.Caption = "&Options", .Visible = false}),
      mnuWOption{{{mnuWOptionsMain, {.Caption = "&Top Most", .Shortcut = {Key::F6}}},
                  {mnuWOptionsMain, {.Caption = "&Normal Position", .Shortcut = {Key::F8}}},
                  {mnuWOptionsMain, {.Caption = "-"}},
                  {mnuWOptionsMain, {.Caption = "&Show Window", .Shortcut = {Key::F2}}},
                  {mnuWOptionsMain, {.Caption = "&Hide Window", .Shortcut = {Key::F4}}},
                  {mnuWOptionsMain, {.Caption = "-"}}}},
      mnuListHiddenWindows(mnuWOptionsMain, {.Caption = "&List Hidden Windows"}),
      mnuHelp(*this, {.Caption = "&Help"}),
      mnuHelpAbout(mnuHelp, {.Caption = "&About", .Shortcut = {Key::F1}}) {
  BindEvents();
}

void formVelmaro::BindEvents() {
  Load = [this] { Form_Load(); };
  Resize = [this] { Form_Resize(); };
  KeyUp = [this](int keyCode, int shift) { Form_KeyUp(keyCode, shift); };
  DropFiles = [this](const std::vector<std::string>& files) { Form_DropFiles(files); };
  Timer1.Tick = [this] { Timer1_Timer(); };

  List1.DblClick = [this] { List1_DblClick(); };
  List1.MouseUp = [this](int button, int shift, float x, float y) { List1_MouseUp(button, shift, x, y); };
  btnVelmaro.MouseUp = [this](int button, int shift, float x, float y) { btnVelmaro_MouseUp(button, shift, x, y); };
  btnLaunch.Click = [this] { btnLaunch_Click(); };
  btnFreeMem.Click = [this] { btnFreeMem_Click(); };
  btnFree.Click = [this] { btnFree_Click(); };
  btnFree.MouseUp = [this](int button, int shift, float x, float y) { btnFree_MouseUp(button, shift, x, y); };
  for (std::int16_t i = 0; i < 7; ++i) Option1[static_cast<std::size_t>(i)].Click = [this, i] { Option1_Click(i); };
  btnRefresh.Click = [this] { btnRefresh_Click(); };
  lblCredits.Click = [this] { lblCredits_Click(); };

  mnuFileRun.Click = [this] { mnuFileRun_Click(); };
  mnuFileFreeMem.Click = [this] { mnuFileFreeMem_Click(); };
  mnuFileKillProcesses.Click = [this] { mnuFileKillProcesses_Click(); };
  mnuFileEditKillList.Click = [this] { mnuFileEditKillList_Click(); };
  mnuFileEditNoKillList.Click = [this] { mnuFileEditNoKillList_Click(); };
  mnuFileRefresh.Click = [this] { mnuFileRefresh_Click(); };
  mnuFileAutoRefresh.Click = [this] { mnuFileAutoRefresh_Click(); };
  mnuFileExit.Click = [this] { mnuFileExit_Click(); };
  mnuFind.Click = [this] { mnuFind_Click(); };
  mnuFindNext.Click = [this] { mnuFindNext_Click(); };
  mnuEditKillListHere.Click = [this] { mnuEditKillListHere_Click(); };
  mnuEditNoKillListHere.Click = [this] { mnuEditNoKillListHere_Click(); };
  for (std::int16_t i = 0; i < 5; ++i)
    mnuOptions[static_cast<std::size_t>(i)].Click = [this, i] { mnuOptions_Click(i); };
  for (std::int16_t i = 0; i < 6; ++i)
    mnuWOption[static_cast<std::size_t>(i)].Click = [this, i] { mnuWOption_Click(i); };
  mnuListHiddenWindows.Click = [this] { mnuListHiddenWindows_Click(); };
  mnuHelpAbout.Click = [this] { mnuHelpAbout_Click(); };
}

}  // namespace velmaro
