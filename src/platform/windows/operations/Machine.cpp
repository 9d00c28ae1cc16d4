#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {
namespace {

// The program's own name ends at its closing quote, or at the first blank where it is not quoted.
std::wstring_view BehindProgramName(std::wstring_view line) {
  const bool quoted = line.starts_with(L'"');
  const auto end = quoted ? line.find(L'"', 1) : line.find_first_of(L" \t");
  if (end == std::wstring_view::npos) return {};
  line.remove_prefix(quoted ? end + 1 : end);
  const auto rest = line.find_first_not_of(L" \t");
  return rest == std::wstring_view::npos ? std::wstring_view() : line.substr(rest);
}

std::wstring ExecutablePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const auto length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

// A folder with letters that the code page does not hold goes by its short name.
std::string ReachablePath(const std::wstring& path) {
  auto text = Narrow(path);
  if (Widen(text) == path) return text;
  std::wstring shorter(path.size() + MAX_PATH, L'\0');
  const auto length = ::GetShortPathNameW(path.c_str(), shorter.data(), static_cast<DWORD>(shorter.size()));
  return length > 0 && length < shorter.size() ? Narrow(shorter.substr(0, length)) : text;
}

}  // namespace

void BeginProgram() {
  // What is loaded by its bare name, now and by the system's own libraries, comes from the system's folder alone.
  using SetFolders = BOOL(WINAPI*)(DWORD);
  const auto kernel = ::GetModuleHandleW(L"kernel32.dll");
  const auto find = [&](const char* name) { return reinterpret_cast<void*>(::GetProcAddress(kernel, name)); };
  if (const auto set = reinterpret_cast<SetFolders>(find("SetDefaultDllDirectories")))
    set(LOAD_LIBRARY_SEARCH_SYSTEM32);
  // The answer to a question for a drive without a disk is its failure, and no box. What is started inherits the mode
  // of the process, and not this one of the thread.
  ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, nullptr);
}

std::string CommandLine() { return Narrow(BehindProgramName(::GetCommandLineW())); }

std::string AppFolder() {
  const auto path = ExecutablePath();
  const auto separator = path.find_last_of(L'\\');
  if (separator == std::wstring::npos) return {};
  const bool root = separator > 0 && path[separator - 1] == L':';
  return ReachablePath(path.substr(0, root ? separator + 1 : separator));
}

char PathSeparator() { return '\\'; }

bool AnswersTheShell(std::string_view) { return false; }

bool SwitchesAreWords() { return false; }

bool LineFeedEndsLine() { return false; }

std::uint32_t AppInstance() { return ToNumber(::GetModuleHandleW(nullptr)); }

}  // namespace platform
