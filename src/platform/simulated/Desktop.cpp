#include "platform/simulated/Desktop.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/simulated/peers/ControlPeer.h"
#include "platform/simulated/peers/FormWindow.h"
#include "platform/simulated/peers/TimerPeer.h"
#include "runtime/Form.h"
#include "runtime/Timer.h"

namespace simulated {
namespace {

// The platform's plain functions have no other way to the desktop of the test.
Desktop*& Current() {
  static Desktop* current = nullptr;
  return current;
}

}  // namespace

Desktop& TheDesktop() {
  if (!Current()) throw std::logic_error("there is no desktop");
  return *Current();
}

Desktop::Desktop() {
  if (Current()) throw std::logic_error("there is a desktop already");
  Current() = this;
}

Desktop::~Desktop() { Current() = nullptr; }

std::uint32_t Desktop::AddProcess(const std::string& name, std::int32_t basePriority) {
  processes.push_back({.name = name, .id = NewHandle(), .basePriority = basePriority});
  return processes.back().id;
}

Process& Desktop::ProcessById(std::uint32_t id) {
  const auto at = std::ranges::find(processes, id, &Process::id);
  if (at == processes.end()) throw std::logic_error("no process has the number " + std::to_string(id));
  return *at;
}

Process& Desktop::ProcessNamed(const std::string& name) {
  const auto at = std::ranges::find_if(processes, [&](const Process& p) { return p.alive && p.name == name; });
  if (at == processes.end()) throw std::logic_error("no process is named " + name);
  return *at;
}

platform::WindowHandle Desktop::AddWindow(const std::string& title, bool visible) {
  windows.push_back({.handle = NewHandle(), .title = title, .visible = visible});
  return windows.back().handle;
}

std::vector<Window*> Desktop::StackedWindows() {
  std::vector<Window*> own;
  std::vector<Window*> all;
  for (auto* form : forms) own.push_back(&form->window);
  for (auto& window : windows) all.push_back(&window);
  all.insert(anotherProgramInFront ? all.end() : all.begin(), own.begin(), own.end());
  return all;
}

Window* Desktop::FindWindow(platform::WindowHandle handle) {
  for (auto* window : StackedWindows())
    if (window->handle == handle) return window;
  return nullptr;
}

Window& Desktop::WindowOf(platform::WindowHandle handle) {
  if (auto* window = FindWindow(handle)) return *window;
  throw std::logic_error("there is no window " + std::to_string(handle));
}

FormWindow* Desktop::ActiveFormWindow() const {
  if (anotherProgramInFront || !openBoxes.empty()) return nullptr;
  const auto at = std::ranges::find_if(forms, [](const FormWindow* form) { return form->TakesInput(); });
  return at == forms.end() ? nullptr : *at;
}

velmaro::Form* Desktop::ActiveForm() const {
  const auto* window = ActiveFormWindow();
  return window ? &window->form : nullptr;
}

platform::WindowHandle Desktop::ActiveWindow() const {
  if (!anotherProgramInFront && !openBoxes.empty()) return openBoxes.back();
  const auto* window = ActiveFormWindow();
  return window ? window->hWnd() : 0;
}

void Desktop::CompareWithModels() {
  for (const auto& [handle, control] : controls)
    if (!PeerOf(*control).IsUpToDate()) misuse.push_back("a control shows what its model does not hold");
  for (const auto* form : forms)
    if (!form->IsUpToDate()) misuse.push_back("a form shows what its model does not hold");
  for (const auto* timer : timers)
    if (!timer->IsUpToDate()) misuse.push_back("a timer runs, or not, against its model");
}

void Desktop::NoteActivation() {
  if (std::exchange(active_, ActiveWindow()) == active_) return;
  if (auto* form = ActiveForm()) form->RaiseActivate();
}

void Desktop::GoToAnotherProgram() {
  anotherProgramInFront = true;
  for (auto* form : forms) form->underOthers = true;
  NoteActivation();
}

void Desktop::Answer(int answer, std::function<void()> whileOpen) { answers.push_back({answer, std::move(whileOpen)}); }

bool Desktop::RunNext() {
  if (script.empty()) return false;
  const auto action = std::move(script.front());
  script.pop_front();
  if (action) action();
  return true;
}

void Desktop::Advance(std::uint64_t milliseconds) {
  const auto end = now + milliseconds;
  for (;;) {
    // A tick may end timers or make new ones, so the next one is looked up anew.
    const auto next = std::ranges::min_element(timers, {}, &TimerPeer::Due);
    if (next == timers.end() || (*next)->Due() > end) break;
    now = std::max(now, (*next)->Due());
    (*next)->Tick();
  }
  now = std::max(now, end);
}

}  // namespace simulated
