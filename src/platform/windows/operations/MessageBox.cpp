#include <algorithm>
#include <vector>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {
namespace {

BOOL CALLBACK CollectOpen(HWND window, LPARAM windows) {
  if (::IsWindowVisible(window) && ::IsWindowEnabled(window))
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

// The program's windows that the user can work in now.
std::vector<HWND> OpenWindows() {
  std::vector<HWND> windows;
  ::EnumThreadWindows(::GetCurrentThreadId(), &CollectOpen, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

// Lets no window of the program but the box take input while the box is open; the box itself sees to its owner.
class OthersBlocked {
 public:
  OthersBlocked(std::vector<HWND> windows, HWND owner) : windows_(std::move(windows)) {
    std::erase(windows_, owner);
    for (const auto window : windows_) ::EnableWindow(window, FALSE);
  }
  OthersBlocked(const OthersBlocked&) = delete;
  OthersBlocked& operator=(const OthersBlocked&) = delete;
  ~OthersBlocked() {
    for (const auto window : windows_) ::EnableWindow(window, TRUE);
  }

 private:
  std::vector<HWND> windows_;
};

}  // namespace

int MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags) {
  auto open = OpenWindows();
  auto owner = ::GetActiveWindow();
  // A box above a minimized window would not be seen.
  const auto shown = std::ranges::find_if(open, [](HWND window) { return !::IsIconic(window); });
  if (!owner && shown != open.end()) owner = *shown;
  const OthersBlocked blocked(std::move(open), owner);
  return ::MessageBoxW(owner, Widen(text, Nul::Escaped).c_str(), Widen(title, Nul::Escaped).c_str(), flags);
}

}  // namespace platform
