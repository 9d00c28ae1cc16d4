#include "desktop/modRegistry.h"
#include "mainform/formVelmaro.h"
#include "platform/advapi32.h"
#include "platform/kernel32.h"
#include "platform/machine.h"
#include "platform/user32.h"
#include "process/ProcessName.h"
#include "process/StartCommand.h"
#include "process/WalkProcesses.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

constexpr auto EmulatorTitle = "Connectix Virtual Game Station";
constexpr auto EmulatorKey = "SOFTWARE\\Connectix\\Connectix Virtual Game Station\\General";
constexpr auto EmulatorProcess = "tnkxfs.dat";
constexpr std::uint32_t HideDelay = 750;

std::string TargetProcess(const std::string& target) {
  if (const auto name = ProcessOfCommand(target)) return *name;
  return WildcardMatch(LCase(target), "*.dat") ? target : target + ".exe";
}

// What starts the emulator: the target where it is a file, else a local copy, else the installed one.
std::string EmulatorCommand(const std::string& target, const std::string& appPath) {
  if (!platform::Dir(target).empty()) return target;
  if (auto local = platform::Dir(appPath + "*vgs.exe"); !local.empty()) return local;
  return RegGetString(platform::HKEY_LOCAL_MACHINE, EmulatorKey, "Location");
}

}  // namespace

int formVelmaro::RunTarget(const std::string& target) {
  platform::Start start{.command = target, .showCommand = RunWindowStyle, .takesPlace = QuietMode};
  if (HideWindowAfterRun) start.titleToHide = HideWindowTitle;
  if (const auto started = StartAtMode(start, CheckedPriorityIndex(), QuietMode)) return started->exitCode;
  if (WildcardMatch(LCase(target), "*vgs.exe*"))
    RunEmulator(target);
  else
    RunProgram(target);
  return 0;
}

void formVelmaro::RunProgram(const std::string& target) {
  StartCommand(target, RunWindowStyle);
  WalkProcesses(TargetProcess(target), CheckedPriorityIndex(), QuietMode, nullptr);
  if (!HideWindowAfterRun) return;
  platform::Sleep(HideDelay);
  if (const auto window = platform::FindWindowA(HideWindowTitle)) platform::ShowWindow(window, platform::SW_HIDE);
}

void formVelmaro::RunEmulator(const std::string& target) {
  if (platform::AppActivate(EmulatorTitle)) {
    platform::SendKeys("~");
  } else if (const auto command = EmulatorCommand(std::string(DropQuotes(target)), AppPath); !command.empty()) {
    StartCommandLine(command);
  }
  platform::AppActivate(EmulatorTitle);
  WalkProcesses(EmulatorProcess, CheckedPriorityIndex(), QuietMode, nullptr);
}

}  // namespace velmaro
