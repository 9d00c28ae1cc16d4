#include "Drive.h"

#include <iterator>
#include <sstream>
#include <stdexcept>

namespace drive {
namespace {

BOOL CALLBACK CollectWindow(HWND window, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

// Place and button go together: a move that is told late must not take the press elsewhere.
void SendMouse(POINT at, DWORD button) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = (at.x * 65536 + 32768) / ::GetSystemMetrics(SM_CXSCREEN);
  input.mi.dy = (at.y * 65536 + 32768) / ::GetSystemMetrics(SM_CYSCREEN);
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | button;
  ::SendInput(1, &input, sizeof input);
}

void SendKey(int key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = static_cast<WORD>(key);
  input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC));
  const bool extended = key == VK_DELETE || key == VK_DOWN || key == VK_UP || key == VK_HOME || key == VK_END;
  input.ki.dwFlags = flags | (extended ? KEYEVENTF_EXTENDEDKEY : 0U);
  ::SendInput(1, &input, sizeof input);
}

std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

bool Until(const std::function<bool()>& holds, int milliseconds) {
  const auto end = ::GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  while (!holds()) {
    if (::GetTickCount64() > end) return false;
    ::Sleep(10);
  }
  return true;
}

std::wstring Beside(const std::wstring& name) {
  std::wstring path(1000, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L"\\/") + 1) + name;
}

Folder::Folder() {
  static int made = 0;
  path_ = std::filesystem::temp_directory_path() /
          (L"velmaro-" + std::to_wstring(::GetCurrentProcessId()) + L'-' + std::to_wstring(++made));
  std::filesystem::create_directories(path_);
  std::filesystem::copy_file(Beside(L"velmaro.exe"), path_ / L"velmaro.exe");
}

Folder::~Folder() {
  // A program that is only just starting stands in no snapshot yet: it is met by a later one.
  Until([&] {
    for (const auto& process : Processes()) {
      const OwnedHandle opened(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process.id));
      std::wstring image(1000, L'\0');
      auto length = static_cast<DWORD>(image.size());
      if (opened && ::QueryFullProcessImageNameW(opened.get(), 0, image.data(), &length) &&
          image.starts_with(path_.wstring()))
        End(process.id);
    }
    std::error_code failure;
    std::filesystem::remove_all(path_, failure);
    return !failure;
  });
}

std::wstring Folder::Probe(const std::wstring& name) const {
  std::filesystem::copy_file(Beside(L"probe.exe"), path_ / name);
  return Path(name);
}

std::string Folder::Read(const std::wstring& name) const { return BytesOf(path_ / name); }

Program::Program(const std::wstring& path, const std::wstring& line) {
  // Otherwise the system would tell us, and take from us, figures of another resolution.
  ::SetProcessDPIAware();
  auto command = L'"' + path + L'"' + (line.empty() ? L"" : L" " + line);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  // A file that was just written can be shut for a moment yet.
  if (!Until([&] {
        return ::CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                                &made);
      }))
    throw std::runtime_error("a program did not start");
  handle_.reset(made.hProcess);
  thread_.reset(made.hThread);
  id_ = made.dwProcessId;
}

Program::~Program() {
  if (!handle_) return;
  ::TerminateProcess(handle_.get(), 1);
  ::WaitForSingleObject(handle_.get(), 5000);
}

int Program::ExitCode(int milliseconds) const {
  DWORD code = 0;
  const bool ended = ::WaitForSingleObject(handle_.get(), static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0;
  return ended && ::GetExitCodeProcess(handle_.get(), &code) ? static_cast<int>(code) : -1;
}

std::vector<HWND> Program::Windows(bool visible) const {
  std::vector<HWND> windows;
  ::EnumWindows(&CollectWindow, reinterpret_cast<LPARAM>(&windows));
  std::erase_if(windows, [&](HWND window) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    return process != id_ || (visible && !::IsWindowVisible(window));
  });
  return windows;
}

HWND Program::Window(const std::wstring& title, const std::wstring& windowClass) const {
  HWND found = nullptr;
  Until([&] {
    for (const auto window : Windows())
      if (windowClass.empty() ? Text(window) == title : ClassOf(window) == windowClass) found = window;
    return found != nullptr;
  });
  return found;
}

Report ReportOf(const std::wstring& probe) {
  const std::filesystem::path file = probe + L".txt";
  Report report;
  // A file that just got its name can be shut for a moment yet.
  const bool came = Until([&] {
    const auto bytes = BytesOf(file);
    std::wistringstream lines({reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t)});
    lines >> report.id >> report.show >> std::ws;
    std::getline(lines, report.folder);
    std::getline(lines, report.line);
    std::error_code failure;
    return report.id != 0 && std::filesystem::remove(file, failure);
  });
  if (!came) throw std::runtime_error("no report came from " + std::filesystem::path(probe).string());
  return report;
}

Program StartProbe(const std::wstring& probe, const std::wstring& line) {
  Program started(probe, line);
  EXPECT_EQ(ReportOf(probe).id, started.Id());
  return started;
}

std::wstring Text(HWND window) {
  std::wstring text(static_cast<std::size_t>(::SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring ClassOf(HWND window) {
  std::wstring name(100, L'\0');
  name.resize(static_cast<std::size_t>(::GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
  return name;
}

std::vector<HWND> Children(HWND parent) {
  std::vector<HWND> children;
  ::EnumChildWindows(parent, &CollectWindow, reinterpret_cast<LPARAM>(&children));
  return children;
}

HWND Child(HWND parent, const std::wstring& windowClass, const std::wstring& text) {
  for (const auto child : Children(parent))
    if (::lstrcmpiW(ClassOf(child).c_str(), windowClass.c_str()) == 0 &&
        (text.empty() || Text(child).starts_with(text)))
      return child;
  return nullptr;
}

HWND Focus(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus;
}

void Press(HWND button) {
  if (!button) throw std::runtime_error("there is no such button");
  ::PostMessageW(button, BM_CLICK, 0, 0);
}

void Front(HWND window) {
  EXPECT_TRUE(Until([&] {
    if (::GetForegroundWindow() != window) ::SetForegroundWindow(window);
    return ::GetForegroundWindow() == window && Focus(window);
  }));
  // Nothing tells when the keyboard has followed; keys that come too early are lost.
  ::Sleep(50);
}

void Keys(std::initializer_list<int> keys, int with) {
  if (with) SendKey(with, 0);
  for (const int key : keys) {
    SendKey(key, 0);
    SendKey(key, KEYEVENTF_KEYUP);
  }
  if (with) SendKey(with, KEYEVENTF_KEYUP);
}

void Click(HWND window, DWORD down, int times, std::optional<POINT> at) {
  RECT client;
  ::GetClientRect(window, &client);
  auto point = at.value_or(POINT{client.right / 2, client.bottom / 2});
  ::ClientToScreen(window, &point);
  SendMouse(point, 0);
  for (int i = 0; i < times; ++i) {
    SendMouse(point, down);
    SendMouse(point, down << 1);
  }
}

void ClickRow(HWND list, int row, DWORD down, int times) {
  RECT place{};
  ::SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
  Click(list, down, times, POINT{place.left + 20, (place.top + place.bottom) / 2});
}

std::map<DWORD, int> Shown(const RECT& place) {
  const int width = place.right - place.left, height = place.bottom - place.top;
  const auto screen = ::GetDC(nullptr), memory = ::CreateCompatibleDC(screen);
  BITMAPINFO form{};
  form.bmiHeader = {sizeof form.bmiHeader, width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* colors = nullptr;
  const auto bitmap = ::CreateDIBSection(screen, &form, DIB_RGB_COLORS, &colors, nullptr, 0);
  ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
  std::map<DWORD, int> pixels;
  for (int i = 0; i < width * height; ++i) ++pixels[static_cast<const DWORD*>(colors)[i] & 0xFFFFFF];
  ::DeleteDC(memory);
  ::DeleteObject(bitmap);
  ::ReleaseDC(nullptr, screen);
  return pixels;
}

}  // namespace drive
