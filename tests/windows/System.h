#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include "Screen.h"

// Files and programs as the system tells of them: nothing here comes from the program under test.
namespace drive {

struct CloseNativeHandle {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, CloseNativeHandle>;

struct Process {
  DWORD id = 0;
  std::wstring name;
};

inline std::vector<Process> Processes() {
  const OwnedHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  std::vector<Process> processes;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (auto more = ::Process32FirstW(snapshot.get(), &entry); more; more = ::Process32NextW(snapshot.get(), &entry))
    processes.push_back({entry.th32ProcessID, entry.szExeFile});
  return processes;
}

inline OwnedHandle Open(DWORD process, DWORD access) { return OwnedHandle(::OpenProcess(access, FALSE, process)); }

inline DWORD ClassOf(DWORD process) {
  return ::GetPriorityClass(Open(process, PROCESS_QUERY_LIMITED_INFORMATION).get());
}

inline void SetClass(DWORD process, DWORD priorityClass) {
  EXPECT_TRUE(::SetPriorityClass(Open(process, PROCESS_SET_INFORMATION).get(), priorityClass));
}

inline void End(DWORD process) {
  const auto opened = Open(process, PROCESS_TERMINATE | SYNCHRONIZE);
  ::TerminateProcess(opened.get(), 1);
  ::WaitForSingleObject(opened.get(), 5000);
}

// Memory that belongs to a process alone, in bytes.
inline std::size_t PrivateBytes(DWORD process) {
  const auto opened = Open(process, PROCESS_QUERY_INFORMATION | PROCESS_VM_READ);
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  return ::K32GetProcessMemoryInfo(opened.get(), &memory, sizeof memory) ? memory.PagefileUsage : 0;
}

inline std::wstring Beside(const std::wstring& name) {
  std::wstring path(1000, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L"\\/") + 1) + name;
}

inline std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A folder of a test's own, with velmaro.exe in it. When it ends, every program that runs from it ends with it.
class Folder {
 public:
  Folder() {
    static int made = 0;
    path_ = std::filesystem::temp_directory_path() /
            (L"velmaro-" + std::to_wstring(::GetCurrentProcessId()) + L'-' + std::to_wstring(++made));
    std::filesystem::create_directories(path_);
    std::filesystem::copy_file(Beside(L"velmaro.exe"), path_ / L"velmaro.exe");
  }
  Folder& operator=(Folder&&) = delete;
  ~Folder() {
    // A program that is only just starting stands in no snapshot yet: it is met by a later one.
    Until([&] {
      for (const auto& process : Processes()) {
        const auto opened = Open(process.id, PROCESS_QUERY_LIMITED_INFORMATION);
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
  std::wstring Path(const std::wstring& name) const { return (path_ / name).wstring(); }
  std::wstring Probe(const std::wstring& name) const {
    std::filesystem::copy_file(Beside(L"probe.exe"), path_ / name);
    return Path(name);
  }
  void Write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::wstring& name) const { return BytesOf(path_ / name); }

 private:
  std::filesystem::path path_;
};

// A program that was started with exactly this command line behind its name. It ends with the object.
class Program {
 public:
  explicit Program(const std::wstring& path, const std::wstring& line = {}) {
    // Otherwise the system would tell us, and take from us, figures of another resolution.
    ::SetProcessDPIAware();
    auto command = L'"' + path + L'"' + (line.empty() ? L"" : L" " + line);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    // A file that was just written can be shut for a moment yet.
    const auto starts = [&] {
      return ::CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                              &made);
    };
    if (!Until(starts)) throw std::runtime_error("a program did not start");
    handle_.reset(made.hProcess);
    thread_.reset(made.hThread);
    id_ = made.dwProcessId;
  }
  Program(Program&&) = default;
  ~Program() {
    if (!handle_) return;
    ::TerminateProcess(handle_.get(), 1);
    ::WaitForSingleObject(handle_.get(), 5000);
  }
  DWORD Id() const { return id_; }
  bool Lives() const { return ::WaitForSingleObject(handle_.get(), 0) == WAIT_TIMEOUT; }
  int ExitCode(int milliseconds = LongEnough) const {
    DWORD code = 0;
    const bool ended = ::WaitForSingleObject(handle_.get(), static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0;
    return ended && ::GetExitCodeProcess(handle_.get(), &code) ? static_cast<int>(code) : -1;
  }
  void Hang() const { ::SuspendThread(thread_.get()); }
  void GoOn() const { ::ResumeThread(thread_.get()); }
  std::vector<HWND> Windows(bool visible = true) const {
    std::vector<HWND> windows;
    ::EnumWindows(&CollectWindow, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [&](HWND window) {
      DWORD process = 0;
      ::GetWindowThreadProcessId(window, &process);
      return process != id_ || (visible && !::IsWindowVisible(window));
    });
    return windows;
  }
  // Waits for a visible window of which something holds; null when none comes.
  HWND Window(const std::function<bool(HWND)>& holds) const {
    HWND found = nullptr;
    Until([&] {
      const auto windows = Windows();
      const auto at = std::ranges::find_if(windows, holds);
      return at != windows.end() && (found = *at);
    });
    return found;
  }
  HWND Window(const std::wstring& title) const {
    return Window([&](HWND window) { return Text(window) == title; });
  }
  HWND WindowOf(const std::wstring& windowClass) const {
    return Window([&](HWND window) { return ClassOf(window) == windowClass; });
  }

 private:
  OwnedHandle handle_;
  OwnedHandle thread_;
  DWORD id_ = 0;
};

struct Report {
  DWORD id = 0;
  int show = -1;
  std::wstring folder;
  std::wstring line;
};

// Waits for the report of a probe that was started from this path, and takes it away: it never stands for a later
// start. Throws when none comes.
inline Report ReportOf(const std::wstring& probe) {
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

inline Program StartProbe(const std::wstring& probe, const std::wstring& line = {}) {
  Program started(probe, line);
  EXPECT_EQ(ReportOf(probe).id, started.Id());
  return started;
}

// The settings of the program, of which none stand there at first.
class Settings {
 public:
  Settings() { ::RegDeleteTreeW(HKEY_CURRENT_USER, Key); }
  std::wstring Read(const std::wstring& key) const {
    std::wstring value(40000, L'\0');
    auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    ::RegGetValueW(HKEY_CURRENT_USER, Key, key.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &bytes);
    return value.c_str();
  }
  void Write(const std::wstring& key, const std::wstring& value) const {
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    ::RegSetKeyValueW(HKEY_CURRENT_USER, Key, key.c_str(), REG_SZ, value.c_str(), bytes);
  }

 private:
  static constexpr auto Key = L"Software\\Velmaro\\Settings";
};

}  // namespace drive
