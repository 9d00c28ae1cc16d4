// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <string>

#include "Compare.h"

namespace {

// How many rows the fullest list of a process shows; the numbers of the system's lists may be asked for from outside.
struct Lists {
  DWORD process;
  LRESULT rows = 0;
};

BOOL CALLBACK LookAtChild(HWND window, LPARAM lists) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  DWORD_PTR rows = 0;
  const std::string kind = name;
  const bool isBox = lstrcmpiA(name, "ListBox") == 0;
  if (isBox || kind == WC_LISTVIEWA)
    SendMessageTimeoutA(window, isBox ? LB_GETCOUNT : LVM_GETITEMCOUNT, 0, 0, SMTO_NORMAL, 1000, &rows);
  auto& found = *reinterpret_cast<Lists*>(lists);
  if (static_cast<LRESULT>(rows) > found.rows) found.rows = static_cast<LRESULT>(rows);
  return TRUE;
}

BOOL CALLBACK LookAtWindow(HWND window, LPARAM lists) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == reinterpret_cast<Lists*>(lists)->process && IsWindowVisible(window))
    EnumChildWindows(window, LookAtChild, lists);
  return TRUE;
}

}  // namespace

void* StartFilled(std::string commandLine, long rows) {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    return nullptr;
  CloseHandle(process.hThread);
  Lists lists{.process = process.dwProcessId};
  constexpr DWORD patience = 10000;
  const DWORD start = GetTickCount();
  while (lists.rows < rows && GetTickCount() - start < patience) {
    EnumWindows(LookAtWindow, reinterpret_cast<LPARAM>(&lists));
    Sleep(1);
  }
  if (lists.rows >= rows) return process.hProcess;
  TerminateProcess(process.hProcess, 0);
  CloseHandle(process.hProcess);
  return nullptr;
}
