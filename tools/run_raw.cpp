// Starts the program that VELMARO_PROGRAM names with VELMARO_ARGS behind its name, to the letter, and waits for it.
// A shell or Wine's own start would set quotes and backslashes of their own.
#include <windows.h>

#include <string>

static std::wstring Variable(const wchar_t* name) {
  std::wstring text(::GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  text.resize(::GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
  return text;
}

int main() {
  std::wstring line = L"\"" + Variable(L"VELMARO_PROGRAM") + L"\" " + Variable(L"VELMARO_ARGS");
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION started{};
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &started)) return 1;
  ::WaitForSingleObject(started.hProcess, INFINITE);
  DWORD code = 1;
  ::GetExitCodeProcess(started.hProcess, &code);
  ::CloseHandle(started.hThread);
  ::CloseHandle(started.hProcess);
  return static_cast<int>(code);
}
