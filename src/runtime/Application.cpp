#include "runtime/Application.h"

namespace velmaro {
namespace {

// The form runtime's one piece of shared state: handlers reach the program's forms by their names alone.
Application*& Current() {
  static Application* current = nullptr;
  return current;
}

}  // namespace

Application& App() { return *Current(); }

Application::Application() { Current() = this; }

Application::~Application() {
  // Native windows go while all models still stand, and forms while the program can still be reached.
  for (const auto& form : instances_) form->DropPeers();
  instances_.clear();
  Current() = nullptr;
}

void Application::Run() {
  while (!ended_ && !forms_.empty() && ProcessNextEvent()) ReleaseUnloaded();
  if (!ended_ && !CanShowForms()) End(1);
}

Form* Application::ActiveForm() const {
  for (auto at = activated_.rbegin(); at != activated_.rend(); ++at)
    if ((*at)->Visible() && (*at)->WindowState() != WindowState::Minimized) return *at;
  return nullptr;
}

void Application::CameToFront(Form& form) {
  std::erase(activated_, &form);
  activated_.push_back(&form);
}

void Application::Remove(Form& form) {
  std::erase(forms_, &form);
  std::erase(activated_, &form);
}

// Only the outermost loop does this: there, no event of any form can be on the stack.
void Application::ReleaseUnloaded() {
  std::erase_if(defaults_, [](const auto& place) { return place.second->Unloaded(); });
  std::erase_if(instances_, [](const auto& form) {
    if (!form->Unloaded()) return false;
    form->DropPeers();
    return true;
  });
}

}  // namespace velmaro
