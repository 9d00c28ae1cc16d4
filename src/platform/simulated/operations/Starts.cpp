#include <algorithm>

#include "platform/kernel32.h"
#include "platform/machine.h"
#include "platform/shell32.h"
#include "platform/simulated/Desktop.h"
#include "platform/simulated/peers/FormWindow.h"
#include "platform/start.h"

using simulated::TheDesktop;

namespace platform {
namespace {

int Note(simulated::Start start) {
  auto& desktop = TheDesktop();
  desktop.starts.push_back(start);
  return desktop.onStart ? desktop.onStart(start) : 42;
}

simulated::Window* FindActivated(const std::string& title) {
  const auto windows = TheDesktop().StackedWindows();
  const auto find = [&](auto fits) {
    const auto at = std::ranges::find_if(windows, [&](const auto* w) { return w->visible && fits(w->title); });
    return at == windows.end() ? nullptr : *at;
  };
  auto* whole = find([&](const std::string& text) { return text == title; });
  return whole ? whole : find([&](const std::string& text) { return text.starts_with(title); });
}

}  // namespace

int ShellExecuteA(WindowHandle owner, const std::string& verb, const std::string& file, const std::string& parameters,
                  const std::string& folder, int showCommand) {
  return Note({.call = "ShellExecuteA",
               .file = file,
               .show = showCommand,
               .folder = folder,
               .parameters = parameters,
               .verb = verb,
               .owner = owner});
}

bool ShellTakesEveryFile() { return TheDesktop().shellTakesEveryFile; }

std::uint32_t WinExec(const std::string& commandLine, int showCommand) {
  return static_cast<std::uint32_t>(Note({.call = "WinExec", .file = commandLine, .show = showCommand}));
}

std::uint32_t Shell(const std::string& commandLine, int windowStyle) {
  return static_cast<std::uint32_t>(Note({.call = "Shell", .file = commandLine, .show = windowStyle}));
}

std::string FindProgram(const std::string& name) {
  for (const auto& path : {name, name + ".exe"})
    if (TheDesktop().files.contains(path)) return path;
  return {};
}

void DoBeforeStart(const std::function<void()>& work) { work(); }

std::optional<Started> StartAtClass(const Start&) { return TheDesktop().startsAtClass; }

bool AppActivate(const std::string& title) {
  TheDesktop().activations.push_back(title);
  const auto* window = FindActivated(title);
  return window && SetForegroundWindow(window->handle);
}

bool SendKeys(const std::string& keys) {
  auto& desktop = TheDesktop();
  const auto stack = desktop.StackedWindows();
  const auto front = std::ranges::find_if(stack, [](const auto* window) { return window->visible; });
  desktop.sentKeys.push_back({keys, front == stack.end() ? std::string() : (*front)->title});
  return true;
}

void Sleep(std::uint32_t milliseconds) {
  auto& desktop = TheDesktop();
  desktop.sleeps.push_back(milliseconds);
  desktop.now += milliseconds;
}

}  // namespace platform
