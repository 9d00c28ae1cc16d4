#include "mainform/formVelmaro.h"
#include "platform/machine.h"
#include "platform/start.h"
#include "process/KillLists.h"
#include "runtime/Application.h"
#include "runtime/Boxes.h"
#include "runtime/Peers.h"
#include "startup/CommandLine.h"

namespace velmaro {

void formVelmaro::Form_Load() {
  AppPath = platform::AppFolder();
  if (!AppPath.ends_with(platform::PathSeparator())) AppPath += platform::PathSeparator();
  const auto line = platform::CommandLine();
  const auto options = platform::SwitchesAreWords() ? ReadCommandWords(line, AppPath) : ReadCommandLine(line, AppPath);
  if (options.help) {
    MsgBox(CommandLineHelp(), platform::MB_ICONINFORMATION);
    App().End(CanShowForms() ? 0 : 1);
    return;
  }
  if (options.target.empty()) ExpectForms();
  NoKillListPath = options.noKillListPath.empty() ? AppPath + "nokilllist.txt" : options.noKillListPath;
  KillListPath = options.killListPath.empty() ? AppPath + "killlist.txt" : options.killListPath;
  QuietMode = options.quiet;
  RunWindowStyle = options.windowStyle;
  HideWindowAfterRun = options.hideWindow;
  HideWindowTitle = options.hideTitle;
  if (options.killRun) mnuFileKillProcesses_Click();
  const bool starts = !options.target.empty();
  Form* meter = nullptr;
  if (options.freeMemory && starts) platform::DoBeforeStart([&] { meter = &FreeMemoryInWindow(); });
  if (options.freeMemory && !starts) FreeMemoryUnattended();
  if (options.high) mnuOptions_Click(1);
  if (options.idle) mnuOptions_Click(3);
  if (options.target.empty()) {
    ListIsSeen = true;
    mnuOptions_Click(2);
    return;
  }
  const int exitCode = RunTarget(options.target);
  // A program whose last window has gone may not let another one come to the front.
  if (meter) UnloadForm(*meter);
  App().End(exitCode);
}

}  // namespace velmaro
