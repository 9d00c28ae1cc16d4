#include "process/KillLists.h"

#include "desktop/modRegistry.h"
#include "mainform/formVelmaro.h"
#include "platform/shell32.h"
#include "process/ProcessNames.h"
#include "process/WalkProcesses.h"
#include "runtime/Boxes.h"
#include "runtime/Files.h"
#include "runtime/Text.h"

namespace velmaro {

std::string NoKillListPath;

namespace {

// Takes the next entry of a list file, without the blanks around it; comments and empty lines are passed over.
bool NextEntry(LineReader& file, std::string& line, std::string_view& entry) {
  while (file.ReadLine(line)) {
    entry = Trim(line);
    if (!entry.empty() && entry.front() != ';') return true;
  }
  return false;
}

// Opens a list in the user's own program for it. False where that leaves him without one.
bool OpensInShell(const std::string& path) {
  constexpr int done = 33;
  if (!platform::ShellTakesEveryFile() && !FileExists(path)) return false;
  const auto result = platform::ShellExecuteA(0, "", path, "", "", platform::SW_SHOWNORMAL);
  return platform::ShellTakesEveryFile() || result >= done;
}

}  // namespace

bool CanKillProcess(std::string_view processName) {
  if (!FileExists(NoKillListPath)) return true;
  const auto name = LCase(processName);
  LineReader file(NoKillListPath);
  // What was not read may cover any process.
  if (file.IsOpen() && !file.IsWhole()) return false;
  std::string line;
  for (std::string_view entry; NextEntry(file, line, entry);)
    if (ResumeTest([&] { return Covers(entry, name); })) return false;
  return true;
}

void formVelmaro::KillListedProcesses(const std::string& path) {
  if (!FileExists(path)) return;
  LineReader file(path);
  if (!file.IsWhole()) return;
  Resume([&] { List1.SetListIndex(-1); });
  mnuOptions_Click(4);
  std::string line;
  for (std::string_view entry; NextEntry(file, line, entry);) WalkProcesses(entry, 4, QuietMode, nullptr);
  mnuOptions_Click(2);
}

void formVelmaro::mnuFileKillProcesses_Click() {
  if (QuietMode) {
    KillListedProcesses(KillListPath);
    return;
  }
  constexpr auto question = platform::MB_YESNO | platform::MB_ICONQUESTION | platform::MB_DEFBUTTON2;
  if (MsgBox("Do you want to kill all the processes listed\r\nin '" + KillListPath + "'?", question) != platform::IDYES)
    return;
  QuietMode = true;
  KillListedProcesses(KillListPath);
  QuietMode = false;
}

void formVelmaro::btnFree_Click() {
  FreeMemoryUnattended();
  // The window can be closed while the memory run lets events through, and nobody is left to ask then.
  if (!Unloaded()) mnuFileKillProcesses_Click();
}

void formVelmaro::btnFree_MouseUp(int Button, int, float, float) {
  if (Button == MouseButton::Right) mnuFileEditKillList_Click();
}

void formVelmaro::mnuFileEditKillList_Click() {
  if (!OpensInShell(KillListPath)) mnuEditKillListHere_Click();
}

void formVelmaro::mnuFileEditNoKillList_Click() {
  if (!OpensInShell(NoKillListPath)) mnuEditNoKillListHere_Click();
}

}  // namespace velmaro
