#include "process/KillLists.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include "desktop/modRegistry.h"
#include "mainform/formVelmaro.h"
#include "platform/kernel32.h"
#include "platform/shell32.h"
#include "process/ProcessNames.h"
#include "process/WalkProcesses.h"
#include "runtime/Boxes.h"
#include "runtime/LineReader.h"
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

// Asks the no-kill list anew for 300 ms where it can't be read: another program may hold it while it saves. What was
// not read then may cover any process.
template <class Question>
bool Patiently(Question question) {
  using namespace std::chrono_literals;
  constexpr auto patience = 300ms;
  constexpr auto pause = 50ms;
  const auto start = std::chrono::steady_clock::now();
  for (auto waited = 0ms;; waited += pause) {
    if (const auto answer = question()) return *answer;
    // To find out can take longer than the waiting.
    if (waited >= patience || std::chrono::steady_clock::now() - start >= patience) return true;
    platform::Sleep(pause.count());
  }
}

std::optional<bool> FalseIfRead(const LineReader& list) {
  return list.State() == LineReader::Standing::Unreadable ? std::nullopt : std::optional(false);
}

// Whether an entry of the no-kill list covers one of some names in lower case. Nothing where the list can't be read to
// its end.
std::optional<bool> AnyIsCovered(const std::vector<std::string>& names) {
  LineReader file(NoKillListPath);
  std::string line;
  for (std::string_view entry; NextEntry(file, line, entry);) {
    const auto isCovered = [&](const std::string& name) {
      return ResumeTest([&] { return WithinMemory([&] { return Covers(entry, name); }); });
    };
    if (std::ranges::any_of(names, isCovered)) return true;
  }
  return FalseIfRead(file);
}

}  // namespace

bool CanKillProcess(std::string_view processName) { return CanKillByAll({std::string(processName)}); }

bool CanKillByAll(std::vector<std::string> names) {
  for (auto& name : names) name = LCase(name);
  return !Patiently([&] { return AnyIsCovered(names); });
}

void formVelmaro::KillListedProcesses(const std::string& path) {
  if (!FileExists(path)) return;
  LineReader file(path);
  // A failure at the end of a long list comes up before its first entry ends anything.
  if (!(file.IsAtEnd() || CanBeRead(path)) || file.State() != LineReader::Standing::Read) return;
  Resume([&] { List1.SetListIndex(-1); });
  mnuOptions_Click(4);
  // A list that can't be read spares everything, and should not be waited for with each process.
  const bool spared = Patiently([] { return FalseIfRead(LineReader(NoKillListPath)); });
  std::string line;
  for (std::string_view entry; !spared && NextEntry(file, line, entry);)
    Resume([&] { WithinMemory([&] { WalkProcesses(entry, 4, QuietMode, nullptr); }); });
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
