#include <algorithm>
#include <stdexcept>
#include <vector>

#include "platform/comdlg32.h"
#include "platform/simulated/Desktop.h"
#include "platform/user32.h"

using simulated::TheDesktop;

namespace platform {
namespace {

// The answers of a box's buttons, from left to right.
std::vector<int> Buttons(std::uint32_t flags) {
  switch (flags & 15) {
    case MB_OK:
      return {IDOK};
    case MB_YESNOCANCEL:
      return {IDYES, IDNO, IDCANCEL};
    case MB_YESNO:
      return {IDYES, IDNO};
    default:
      throw std::logic_error("the program shows no box with such buttons");
  }
}

simulated::Desktop::Reply NextReply(std::uint32_t flags) {
  auto& answers = TheDesktop().answers;
  const auto buttons = Buttons(flags);
  if (answers.empty()) return {buttons.at(flags >> 8 & 15), {}};
  auto reply = std::move(answers.front());
  answers.pop_front();
  if (std::ranges::count(buttons, reply.answer) == 0)
    throw std::logic_error("the box has no button for the answer " + std::to_string(reply.answer));
  return reply;
}

// A box that stands in front of the program's windows.
class OpenBox {
 public:
  OpenBox() { TheDesktop().openBoxes.push_back(TheDesktop().NewHandle()); }
  ~OpenBox() { TheDesktop().openBoxes.pop_back(); }
  OpenBox(const OpenBox&) = delete;
  OpenBox& operator=(const OpenBox&) = delete;
};

}  // namespace

int MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags) {
  auto& desktop = TheDesktop();
  const auto reply = NextReply(flags);
  desktop.boxes.push_back({text, title, flags, reply.answer});
  {
    const OpenBox open;
    desktop.NoteActivation();
    if (reply.whileOpen) reply.whileOpen();
  }
  desktop.NoteActivation();
  return reply.answer;
}

bool GetOpenFileNameA(OPENFILENAME& dialog) {
  auto& desktop = TheDesktop();
  desktop.openDialogs.push_back(dialog);
  if (desktop.picks.empty()) return false;
  const auto pick = std::move(desktop.picks.front());
  desktop.picks.pop_front();
  if (!pick || pick->size() + 1 > dialog.nMaxFile) return false;
  if (dialog.lpstrFile.size() < pick->size() + 1) dialog.lpstrFile.resize(pick->size() + 1);
  dialog.lpstrFile.replace(0, pick->size() + 1, pick->c_str(), pick->size() + 1);
  return true;
}

}  // namespace platform
