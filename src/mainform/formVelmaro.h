#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "runtime/Buttons.h"
#include "runtime/Form.h"
#include "runtime/Label.h"
#include "runtime/ListBox.h"
#include "runtime/Menu.h"
#include "runtime/Timer.h"

namespace velmaro {

// The main window: the filter buttons, the list of processes or windows, the large buttons and the menu bar. The rooms
// above define the handlers that belong to them in their own files; this header knows none of them.
class formVelmaro : public Form {
 public:
  // The smallest outer size that the layout allows.
  static constexpr Twips LeastWidth = 6500;
  static constexpr Twips LeastHeight = 3000;

  formVelmaro();

  ListBox List1;
  CommandButton btnVelmaro;
  CommandButton btnLaunch;
  CommandButton btnFreeMem;
  CommandButton btnFree;
  std::array<OptionButton, 7> Option1;
  CommandButton btnRefresh;
  Label lblCredits;
  velmaro::Timer Timer1;

  Menu mnuFile;
  Menu mnuFileRun;
  Menu mnuFileFreeMem;
  Menu mnuFileSep0;
  Menu mnuFileKillProcesses;
  Menu mnuFileEditKillList;
  Menu mnuFileEditNoKillList;
  Menu mnuFileSep1;
  Menu mnuFileRefresh;
  Menu mnuFileAutoRefresh;
  Menu mnuFileSep2;
  Menu mnuFileExit;
  Menu mnuEdit;
  Menu mnuFind;
  Menu mnuFindNext;
  Menu mnuEditSep0;
  Menu mnuEditKillListHere;
  Menu mnuEditNoKillListHere;
  Menu mnuOptionsMain;
  std::array<Menu, 5> mnuOptions;
  Menu mnuWOptionsMain;
  std::array<Menu, 6> mnuWOption;
  Menu mnuListHiddenWindows;
  Menu mnuHelp;
  Menu mnuHelpAbout;

  // startup/: the start.

  // Reads the command line, acts on its switches, and starts the target that is left of it and ends the program, or
  // fills the list.
  void Form_Load();

  // mainform/: the layout, the end and the about box.

  // Lets the list grow with the window, or pushes a window below its limits back. Where that is in vain, what it holds
  // follows the size that it has.
  void Form_Resize();
  void mnuFileExit_Click();
  void lblCredits_Click();
  void mnuHelpAbout_Click();

  // process/: the list view.

  // The one refresh: clears the list and builds it from what runs now.
  void mnuFileRefresh_Click();
  void btnRefresh_Click();
  void mnuFileAutoRefresh_Click();
  void Form_KeyUp(int KeyCode, int Shift);
  void Option1_Click(std::int16_t Index);
  void Timer1_Timer();
  // The index of the filter that is selected, 0 if none is.
  std::int16_t SelectedFilterIndex() const;

  // process/: the commands on the selected row.

  void btnVelmaro_MouseUp(int Button, int Shift, float X, float Y);
  // Moves the check mark and applies the option to the selected row.
  void mnuOptions_Click(std::int16_t Index);
  void List1_DblClick();
  void List1_MouseUp(int Button, int Shift, float X, float Y);
  // The index of the option that is checked, 0 if none is.
  std::int16_t CheckedPriorityIndex() const;

  // process/: the kill list.

  void mnuFileKillProcesses_Click();
  void btnFree_Click();
  void btnFree_MouseUp(int Button, int Shift, float X, float Y);
  void mnuFileEditKillList_Click();
  void mnuFileEditNoKillList_Click();

  // process/: windows, and the search in the list.

  // Clears the list and fills it with the desktop's top-level windows.
  void ListHiddenWindows();
  void mnuWOption_Click(std::int16_t Index);
  void mnuListHiddenWindows_Click();
  void mnuFind_Click();
  void mnuFindNext_Click();

  // memory/, launcher/ and editor/.

  void mnuFileFreeMem_Click();
  void btnFreeMem_Click();
  // Frees memory in a window of its own that comes and goes; returns when it is done.
  void FreeMemoryUnattended();
  // The same with a window that stays, and is returned.
  Form& FreeMemoryInWindow();
  void mnuFileRun_Click();
  void btnLaunch_Click();
  // Opens the Run dialog with the first of the files as its command.
  void Form_DropFiles(const std::vector<std::string>& Files);
  void mnuEditKillListHere_Click();
  void mnuEditNoKillListHere_Click();

  // The state that the switches and commands leave.

  std::string AppPath;              // the executable's folder, with a separator at its end
  std::string KillListPath;         // the kill list, wherever "/k" put it
  bool QuietMode = false;           // no box asks and none reports
  std::int16_t RunWindowStyle = 1;  // the show command of a started target
  bool HideWindowAfterRun = false;  // hide a window when the target runs
  std::string HideWindowTitle;      // its title
  std::int16_t PriorityChoice = 0;  // the option as a number
  std::string FindText;             // the last text searched for, as typed

 private:
  // Starts the target of an unattended run, sets its priority and hides a window where that was asked for. Gives the
  // exit code of the run.
  int RunTarget(const std::string& target);
  void RunProgram(const std::string& target);
  void RunEmulator(const std::string& target);
  // Ends the programs of a kill list.
  void KillListedProcesses(const std::string& path);
  void EnumHiddenWindowProc(platform::WindowHandle window);
  // Tells the user once where the desktop keeps windows from the list.
  void TellOfMissingWindows();
  void BindEvents();
  void FitRows();

  std::vector<Bounds> Designed;  // the places of the buttons, as they were made

  bool ListIsSeen = false;  // the start has come to where the window comes up
  bool MissingWindowsTold = false;
};

}  // namespace velmaro
