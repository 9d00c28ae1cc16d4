// A program for velmaro.exe to start, change and end: probe.exe [--title TITLE]
// It writes how it was started beside itself (probe.exe.txt), shows a window where a title is given, and lives for
// three minutes unless it is ended.
#include <windows.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

std::wstring OwnPath() {
  std::array<wchar_t, 500> path{};
  ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return path.data();
}

// A reader never sees half a report: it gets its name when it is whole.
void Report() {
  std::array<wchar_t, 500> folder{};
  ::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
  STARTUPINFOW start{};
  ::GetStartupInfoW(&start);
  const int show = start.dwFlags & STARTF_USESHOWWINDOW ? start.wShowWindow : -1;
  const auto text = std::to_wstring(::GetCurrentProcessId()) + L'\n' + std::to_wstring(show) + L'\n' + folder.data() +
                    L'\n' + ::GetCommandLineW() + L'\n';
  const auto path = OwnPath() + L".txt";
  if (auto* file = ::_wfopen((path + L".part").c_str(), L"wb")) {
    std::fwrite(text.data(), sizeof(wchar_t), text.size(), file);
    std::fclose(file);
    ::MoveFileExW((path + L".part").c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
  }
}

std::wstring Title() {
  const std::wstring line = ::GetCommandLineW();
  const auto at = line.find(L"--title ");
  return at == std::wstring::npos ? L"" : line.substr(at + 8);
}

}  // namespace

int main() {
  if (const auto title = Title(); !title.empty())
    ::CreateWindowExW(0, L"STATIC", title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 700, 500, 300, 200, nullptr, nullptr,
                      nullptr, nullptr);
  Report();
  ::SetTimer(nullptr, 0, 180000, nullptr);
  for (MSG message; ::GetMessageW(&message, nullptr, 0, 0) > 0 && (message.message != WM_TIMER || message.hwnd);)
    ::DispatchMessageW(&message);
}
