// A program for velmaro.exe to start, change and end: probe.exe [--title TITLE]
// It writes how it was started beside itself (probe.exe.txt), shows a window where a title is given, and lives for
// three minutes unless it is ended.
#include <windows.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

int main() {
  const std::wstring line = ::GetCommandLineW();
  if (const auto at = line.find(L"--title "); at != std::wstring::npos)
    ::CreateWindowExW(0, L"STATIC", line.c_str() + at + 8, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 700, 500, 300, 200,
                      nullptr, nullptr, nullptr, nullptr);
  STARTUPINFOW start{};
  ::GetStartupInfoW(&start);
  const int show = start.dwFlags & STARTF_USESHOWWINDOW ? start.wShowWindow : -1;
  const auto report = std::to_wstring(::GetCurrentProcessId()) + L'\n' + std::to_wstring(show) + L'\n' +
                      std::filesystem::current_path().wstring() + L'\n' + line + L'\n';
  std::array<wchar_t, 500> own{};
  ::GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size()));
  // A reader never sees half a report: it gets its name when it is whole.
  const std::filesystem::path part = own.data() + std::wstring(L".part");
  std::ofstream(part, std::ios::binary)
      .write(reinterpret_cast<const char*>(report.data()),
             static_cast<std::streamsize>(report.size() * sizeof(wchar_t)));
  std::filesystem::rename(part, own.data() + std::wstring(L".txt"));
  ::SetTimer(nullptr, 0, 180000, nullptr);
  for (MSG message; ::GetMessageW(&message, nullptr, 0, 0) > 0 && (message.message != WM_TIMER || message.hwnd);)
    ::DispatchMessageW(&message);
}
