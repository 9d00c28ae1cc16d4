#include <optional>
#include <utility>

#include "mainform/formVelmaro.h"
#include "platform/reach.h"
#include "platform/user32.h"
#include "runtime/Boxes.h"

namespace velmaro {
namespace {

std::string GetWindowTitle(platform::WindowHandle window) {
  const auto length = platform::GetWindowTextLengthA(window);
  std::string title(static_cast<std::size_t>(length), '\0');
  // The string's own final NUL takes the one that the call writes.
  platform::GetWindowTextA(window, title.data(), length + 1);
  return title;
}

// One call that places a window: where it stands in the stack, and whether it shows.
struct WindowCommand {
  std::int32_t insertAfter;
  std::uint32_t flags;
};

std::optional<WindowCommand> CommandOf(std::int16_t index) {
  using namespace platform;
  constexpr auto keepPlace = SWP_NOSIZE | SWP_NOMOVE;
  switch (index) {
    case 0:
      return WindowCommand{HWND_TOPMOST, keepPlace};
    case 1:
      return WindowCommand{HWND_NOTOPMOST, keepPlace};
    case 3:
      return WindowCommand{HWND_NOTOPMOST, keepPlace | SWP_SHOWWINDOW};
    case 4:
      return WindowCommand{HWND_NOTOPMOST, keepPlace | SWP_HIDEWINDOW};
    default:
      return std::nullopt;
  }
}

}  // namespace

void formVelmaro::ListHiddenWindows() {
  const ListBox::Refill refill(List1);
  List1.Clear();
  platform::EnumWindows([this](platform::WindowHandle window) {
    Resume([&] { EnumHiddenWindowProc(window); });
    return true;
  });
}

void formVelmaro::EnumHiddenWindowProc(platform::WindowHandle window) {
  const auto row = List1.ListCount();
  auto title = GetWindowTitle(window);
  if (title.empty()) {
    if (!mnuListHiddenWindows.Checked()) return;
    title = " - Hidden Window - " + std::to_string(static_cast<std::int32_t>(window));
  }
  List1.AddItem(title + platform::WindowRemark(window));
  List1.SetItemData(row, static_cast<std::int32_t>(window));
}

void formVelmaro::mnuWOption_Click(std::int16_t Index) {
  if (List1.ListIndex() < 0) return;
  const auto window = static_cast<platform::WindowHandle>(List1.ItemData(List1.ListIndex()));
  const auto command = CommandOf(Index);
  if (!command || platform::SetWindowPos(window, command->insertAfter, 0, 0, 0, 0, command->flags)) return;
  if (const auto why = platform::WhyOutOfReach(window, command->flags); !why.empty())
    MsgBox(why, platform::MB_ICONINFORMATION);
}

void formVelmaro::TellOfMissingWindows() {
  if (std::exchange(MissingWindowsTold, true)) return;
  if (const auto why = platform::WhyWindowsAreMissing(); !why.empty()) MsgBox(why, platform::MB_ICONINFORMATION);
}

void formVelmaro::mnuListHiddenWindows_Click() {
  mnuListHiddenWindows.SetChecked(!mnuListHiddenWindows.Checked());
  btnRefresh_Click();
}

}  // namespace velmaro
