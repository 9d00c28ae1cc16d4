#include <vector>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/operations/Titles.h"

namespace platform {
namespace {

constexpr DWORD PatienceMilliseconds = 500;

template <class Test>
bool WaitUntil(Test test) {
  for (const auto start = ::GetTickCount(); !test(); ::Sleep(5))
    if (::GetTickCount() - start > PatienceMilliseconds) return false;
  return true;
}

bool SameText(std::wstring_view a, std::wstring_view b) {
  return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) ==
         CSTR_EQUAL;
}

HWND FindByTitle(std::wstring_view wanted) {
  HWND beginning = nullptr;
  for (const auto window : TopLevelWindows()) {
    if (!::IsWindowVisible(window)) continue;
    const auto title = TitleOf(window);
    if (SameText(title, wanted)) return window;
    if (!beginning && SameText(std::wstring_view(title).substr(0, wanted.size()), wanted)) beginning = window;
  }
  return beginning;
}

// Shares the input of the window that is in front now: only what belongs to it may put another window there.
class SharedInput {
 public:
  SharedInput() : other_(::GetWindowThreadProcessId(::GetForegroundWindow(), nullptr)) {
    // The input of a program that hangs would hold this one up too.
    shared_ = other_ != 0 && other_ != ::GetCurrentThreadId() && !::IsHungAppWindow(::GetForegroundWindow()) &&
              ::AttachThreadInput(::GetCurrentThreadId(), other_, TRUE);
  }
  SharedInput(const SharedInput&) = delete;
  SharedInput& operator=(const SharedInput&) = delete;
  ~SharedInput() {
    if (shared_) ::AttachThreadInput(::GetCurrentThreadId(), other_, FALSE);
  }

 private:
  DWORD other_;
  bool shared_ = false;
};

bool IsInFront(HWND window) { return ::GetForegroundWindow() == window; }

bool TakesKeys() {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  return ::GetGUIThreadInfo(0, &info) && info.hwndFocus;
}

INPUT KeyInput(WORD key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  return input;
}

}  // namespace

bool AppActivate(const std::string& title) {
  const auto window = FindByTitle(Widen(title));
  if (!window) return false;
  if (IsInFront(window)) return true;
  if (!::SetForegroundWindow(window) || !IsInFront(window)) {
    const SharedInput shared;
    ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_ASYNCWINDOWPOS);
    ::SetForegroundWindow(window);
  }
  WaitUntil([window] { return IsInFront(window); });
  return true;
}

bool SendKeys(const std::string& keys) {
  // A window that has just come to the front has no focus yet, and a key that is sent to it then is lost.
  WaitUntil(TakesKeys);
  ::Sleep(20);
  std::vector<INPUT> inputs;
  for (const char key : keys) {
    if (key != '~') continue;
    inputs.push_back(KeyInput(VK_RETURN, 0));
    inputs.push_back(KeyInput(VK_RETURN, KEYEVENTF_KEYUP));
  }
  const auto count = static_cast<UINT>(inputs.size());
  return ::SendInput(count, inputs.data(), sizeof(INPUT)) == count;
}

}  // namespace platform
