#include "platform/start.h"
#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/ground/SystemLibrary.h"

// It needs the system's other headers ahead of it.
#include <objbase.h>

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

// What a start gives that was made or refused, in the terms of the calls that tell it.
std::uint32_t ToResult(DWORD error) {
  if (error == 0) return 33;
  const bool known = error <= ERROR_PATH_NOT_FOUND || error == ERROR_BAD_FORMAT || error == ERROR_ELEVATION_REQUIRED;
  return known ? error : 0;
}

const wchar_t* OrNull(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

// Parts of the shell, and programs that it asks, need COM in this thread.
class ComInUse {
 public:
  ComInUse() {
    const auto init = SystemFunction<decltype(&::CoInitializeEx)>(L"ole32.dll", "CoInitializeEx");
    used_ = init && SUCCEEDED(init(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
  }
  ComInUse(const ComInUse&) = delete;
  ComInUse& operator=(const ComInUse&) = delete;
  ~ComInUse() {
    const auto end = SystemFunction<decltype(&::CoUninitialize)>(L"ole32.dll", "CoUninitialize");
    if (used_ && end) end();
  }

 private:
  bool used_ = false;
};

}  // namespace

std::uint32_t WinExec(const std::string& commandLine, int showCommand) {
  // What is started with arguments finds itself in the same folder as what is started without.
  constexpr auto folder = L"C:\\";
  const bool present = ::GetFileAttributesW(folder) != INVALID_FILE_ATTRIBUTES;
  return ToResult(Run(commandLine, showCommand, present ? folder : nullptr));
}

bool ShellTakesEveryFile() { return true; }

std::uint32_t Shell(const std::string& commandLine, int windowStyle) { return ToResult(Run(commandLine, windowStyle)); }

std::string FindProgram(const std::string& name) {
  const auto wide = Widen(name);
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = 0;
  while ((length = ::SearchPathW(nullptr, wide.c_str(), L".exe", static_cast<DWORD>(path.size()), path.data(),
                                 nullptr)) >= path.size())
    path.resize(length + 1);
  path.resize(length);
  const auto marks = ::GetFileAttributesW(path.c_str());
  return marks != INVALID_FILE_ATTRIBUTES && !(marks & FILE_ATTRIBUTE_DIRECTORY) ? Narrow(path) : std::string();
}

int ShellExecuteA(WindowHandle owner, const std::string& verb, const std::string& file, const std::string& parameters,
                  const std::string& folder, int showCommand) {
  const auto name = Widen(file);
  // Some shells overrun their buffers on a name that no file can have.
  if (name.size() >= MAX_PATH && name.find(L"://") == std::wstring::npos) return ERROR_FILE_NOT_FOUND;
  // No window needs that library, and each start would wait until it is loaded.
  const auto execute = SystemFunction<decltype(&::ShellExecuteExW)>(L"shell32.dll", "ShellExecuteExW");
  if (!execute) return SE_ERR_DLLNOTFOUND;
  const ComInUse com;
  const auto verbText = Widen(verb);
  const auto parameterText = Widen(parameters);
  const auto folderText = Widen(folder);
  SHELLEXECUTEINFOW start{};
  start.cbSize = sizeof start;
  // The program may be gone before a start that the shell makes in a thread of its own.
  start.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  // What the shell asks the user stands above the window that he works in.
  start.hwnd = owner != 0 ? ToNative<HWND>(owner) : ::GetActiveWindow();
  start.lpVerb = OrNull(verbText);
  start.lpFile = name.c_str();
  start.lpParameters = OrNull(parameterText);
  start.lpDirectory = OrNull(folderText);
  start.nShow = showCommand;
  execute(&start);
  return static_cast<int>(reinterpret_cast<std::intptr_t>(start.hInstApp));
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
