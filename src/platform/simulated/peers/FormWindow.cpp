#include "platform/simulated/peers/FormWindow.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace simulated {
namespace {

// In twips: what the frame adds to the client area, the height of a menu bar, a minimized window and the screen.
constexpr velmaro::Twips frameWidth = 120;
constexpr velmaro::Twips frameHeight = 405;
constexpr velmaro::Twips menuHeight = 285;
constexpr velmaro::Twips iconWidth = 2400;
constexpr velmaro::Twips iconHeight = 390;
constexpr velmaro::Twips screenWidth = 15360;
constexpr velmaro::Twips screenHeight = 11520;

}  // namespace

FormWindow* WindowFor(const velmaro::Form& form) { return dynamic_cast<FormWindow*>(form.Peer()); }

bool CanChoose(const velmaro::Menu& entry, const velmaro::Menu& top) {
  if (entry.IsSeparator() || !entry.Entries().empty()) return false;
  const auto* at = &entry;
  while (at && at != &top && at->Visible()) at = at->Parent();
  return at == &top;
}

FormWindow::FormWindow(velmaro::Form& of) : form(of) {
  window = {.handle = desktop_.NewHandle(), .title = form.Caption(), .visible = false};
  normal_ = {Pixels(form.Args().ClientWidth) + Frame().width, Pixels(form.Args().ClientHeight) + Frame().height};
  desktop_.forms.insert(desktop_.forms.begin(), this);
  AddMenus(form.MenuBar());
}

void FormWindow::AddMenus(const std::vector<velmaro::Menu*>& menus) {
  for (auto* menu : menus) {
    ApplyMenu(*menu);
    AddMenus(menu->Entries());
  }
}

bool FormWindow::IsUpToDate() const {
  return window.title == form.Caption() && std::ranges::all_of(menus_, [](const auto& shown) {
           return shown.second == std::pair(shown.first->Checked(), shown.first->Visible());
         });
}

FormWindow::~FormWindow() { std::erase(desktop_.forms, this); }

int FormWindow::Pixels(velmaro::Twips length) const { return static_cast<int>(std::lround(length / twipsPerPixel_)); }

FormWindow::Size FormWindow::Frame() const {
  const bool bare = form.Args().BorderStyle == velmaro::BorderStyle::None;
  const auto height = (bare ? 0 : frameHeight) + (form.MenuBar().empty() ? 0 : menuHeight);
  return {bare ? 0 : Pixels(frameWidth), Pixels(height)};
}

FormWindow::Size FormWindow::Outer() const {
  if (state_ == velmaro::WindowState::Minimized) return {Pixels(iconWidth), Pixels(iconHeight)};
  if (state_ == velmaro::WindowState::Maximized) return {Pixels(screenWidth), Pixels(screenHeight)};
  return normal_;
}

platform::PixelRect FormWindow::Client() const {
  if (state_ == velmaro::WindowState::Minimized) return {};
  return {0, 0, std::max(0, Outer().width - Frame().width), std::max(0, Outer().height - Frame().height)};
}

// The form may end its window while it is told, so nothing of the window is used behind that.
void FormWindow::Report() {
  const auto twips = [this](int pixels) { return static_cast<velmaro::Twips>(pixels) * twipsPerPixel_; };
  const auto client = Client();
  form.ResizedTo(twips(Outer().width), twips(Outer().height), twips(client.right), twips(client.bottom), state_,
                 inVain_);
}

void FormWindow::SizeTo(velmaro::Twips width, velmaro::Twips height) {
  inVain_ = held_;
  if (held_) return Report();
  const Size size{std::max(Pixels(width), Frame().width), std::max(Pixels(height), Frame().height)};
  if (size == normal_) return;
  normal_ = size;
  Report();
}

void FormWindow::ImposeSize(velmaro::Twips width, velmaro::Twips height) {
  normal_ = {Pixels(width), Pixels(height)};
  held_ = true;
  inVain_ = false;
  Report();
}

void FormWindow::SetState(velmaro::WindowState state) {
  auto& desktop = desktop_;
  state_ = state;
  Report();
  desktop.NoteActivation();
}

void FormWindow::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Caption) window.title = form.Caption();
  if (what == velmaro::Change::Bounds) SizeTo(form.Width(), form.Height());
}

bool FormWindow::TakesInput() const { return window.visible && !blocked_ && state_ != velmaro::WindowState::Minimized; }

void FormWindow::ToFront() {
  underOthers = false;
  std::erase(desktop_.forms, this);
  desktop_.forms.insert(desktop_.forms.begin(), this);
  desktop_.NoteActivation();
}

void FormWindow::Show(velmaro::Form* above) {
  owner = above;
  window.visible = true;
  if (!std::exchange(reported_, true)) Report();
  // The form's first layout may have ended the window.
  if (auto* still = WindowFor(form)) still->ToFront();
}

void FormWindow::Hide(velmaro::Form* next) {
  if (auto* heir = next && desktop_.ActiveForm() == &form ? WindowFor(*next) : nullptr) heir->ToFront();
  window.visible = false;
  // Where none of the program's windows can take its place, the system brings up another program's, as it does where
  // that lies right below.
  const auto& forms = desktop_.forms;
  const auto below = std::ranges::find_if(forms, &FormWindow::TakesInput);
  if (below != forms.end() ? (*below)->underOthers
                           : std::ranges::any_of(forms, [](const auto* other) { return other->window.visible; }))
    desktop_.anotherProgramInFront = true;
  desktop_.NoteActivation();
}

void FormWindow::Block(bool blocked) {
  blocked_ = blocked;
  desktop_.NoteActivation();
}

void FormWindow::PopupMenu(velmaro::Menu& menu, std::optional<velmaro::Bounds> place, velmaro::Menu* defaultEntry) {
  Popup popup{.menu = &menu, .place = place, .defaultEntry = defaultEntry, .checked = {}};
  std::ranges::copy_if(menu.Entries(), std::back_inserter(popup.checked), &velmaro::Menu::Checked);
  desktop_.popups.push_back(std::move(popup));
  if (desktop_.choices.empty()) return;
  auto* chosen = desktop_.choices.front();
  desktop_.choices.pop_front();
  if (!chosen) return;
  if (!CanChoose(*chosen, menu)) throw std::logic_error("the popup has no entry " + chosen->Caption());
  chosen->RaiseClick();
}

}  // namespace simulated
