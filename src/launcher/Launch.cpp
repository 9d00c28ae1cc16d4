#include <algorithm>
#include <array>

#include "desktop/modFiles.h"
#include "launcher/Settings.h"
#include "launcher/formLauncher.h"
#include "mainform/formVelmaro.h"
#include "platform/user32.h"
#include "process/ProcessName.h"
#include "process/StartCommand.h"
#include "process/WalkProcesses.h"
#include "runtime/Application.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

constexpr std::int16_t NormalEntry = 0;
// The entry of the main window's options, and so the mode, for each option button of the dialog.
constexpr std::array<std::int16_t, 4> EntryOfOption = {2, 1, NormalEntry, 3};

std::string ProcessWithoutFolder(const std::string& command) {
  const auto name = ProcessOfCommand(command).value_or(command + ".exe");
  return name.substr(ExtractFilePath(name).size());
}

}  // namespace

void formLauncher::btnOK_Click() {
  if (const auto command = cmbRun.Text(); !command.empty()) {
    FileCommand(command);
    Hide();
    SaveSetting("LastRun", command);
    const auto entry = ChosenEntry();
    if (const auto started = StartAtMode({.command = command, .atHome = true}, entry, true)) {
      MarkEntry(entry);
      if (!App().Default<formVelmaro>().QuietMode) TellIfNotRaised(*started, entry);
    } else {
      StartCommand(command, platform::SW_SHOWNORMAL);
      MarkEntry(entry);
      if (entry != NormalEntry) WalkProcesses(ProcessWithoutFolder(command), entry, true, nullptr);
    }
  }
  UnloadForm(*this);
}

// A command that stands in the history already leaves it as it is, in its order and in its own case.
void formLauncher::FileCommand(const std::string& command) {
  for (int i = 0; i < cmbRun.ListCount(); ++i)
    if (EqualIgnoringCase(cmbRun.List(i), command)) return;
  cmbRun.AddItem(command, 0);
  const int filed = std::min<int>(cmbRun.ListCount(), 10);
  for (int i = 1; i <= filed; ++i) SaveSetting("LastRun" + std::to_string(i), cmbRun.List(i - 1));
}

std::int16_t formLauncher::ChosenEntry() const {
  const auto chosen = std::ranges::find_if(optPriority, [](const OptionButton& option) { return option.Value(); });
  const auto index = std::min<std::ptrdiff_t>(chosen - optPriority.begin(), 3);
  return EntryOfOption[static_cast<std::size_t>(index)];
}

void formLauncher::MarkEntry(std::int16_t entry) {
  auto& main = App().Default<formVelmaro>();
  for (auto& option : main.mnuOptions) option.SetChecked(false);
  main.mnuOptions[static_cast<std::size_t>(entry)].SetChecked(true);
}

}  // namespace velmaro
