#include "platform/start.h"
#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/ground/SystemLibrary.h"

namespace platform {
namespace {

// Starts a command line and gives 0, or the system's error. It does not wait until the program is ready for input.
DWORD Run(const std::string& commandLine, int showCommand, const wchar_t* folder = nullptr) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(showCommand);
  PROCESS_INFORMATION started{};
  auto line = Widen(commandLine);
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, folder, &startup, &started))
    return ::GetLastError();
  const OwnedHandle process(ToNumber(started.hProcess));
  const OwnedHandle thread(ToNumber(started.hThread));
  return 0;
}

const wchar_t* OrNull(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

std::uint32_t WinExec(const std::string& commandLine, int showCommand) {
  // What is started with arguments finds itself in the same folder as what is started without.
  constexpr auto folder = L"C:\\";
  const bool present = ::GetFileAttributesW(folder) != INVALID_FILE_ATTRIBUTES;
  const auto error = Run(commandLine, showCommand, present ? folder : nullptr);
  if (error == 0) return 33;
  const bool known = error <= ERROR_PATH_NOT_FOUND || error == ERROR_BAD_FORMAT;
  return known ? error : 0;
}

bool ShellTakesEveryFile() { return true; }

bool Shell(const std::string& commandLine, int windowStyle) { return Run(commandLine, windowStyle) == 0; }

int ShellExecuteA(WindowHandle owner, const std::string& verb, const std::string& file, const std::string& parameters,
                  const std::string& folder, int showCommand) {
  const auto name = Widen(file);
  // Some shells overrun their buffers on a name that no file can have.
  if (name.size() >= MAX_PATH && name.find(L"://") == std::wstring::npos) return ERROR_FILE_NOT_FOUND;
  // No window needs that library, and each start would wait until it is loaded.
  const auto execute = SystemFunction<decltype(&::ShellExecuteW)>(L"shell32.dll", "ShellExecuteW");
  if (!execute) return SE_ERR_DLLNOTFOUND;
  const auto result = execute(ToNative<HWND>(owner), OrNull(Widen(verb)), name.c_str(), OrNull(Widen(parameters)),
                              OrNull(Widen(folder)), showCommand);
  return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
}

void DoBeforeStart(const std::function<void()>& work) { work(); }

std::optional<Started> StartAtClass(const Start&) { return std::nullopt; }

std::string Dir(const std::string& pattern) {
  struct Search {
    HANDLE handle;
    ~Search() {
      if (handle != INVALID_HANDLE_VALUE) ::FindClose(handle);
    }
  };
  WIN32_FIND_DATAW found{};
  const Search search{::FindFirstFileW(Widen(pattern).c_str(), &found)};
  for (BOOL more = search.handle != INVALID_HANDLE_VALUE; more; more = ::FindNextFileW(search.handle, &found))
    if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return Narrow(found.cFileName);
  return {};
}

}  // namespace platform
