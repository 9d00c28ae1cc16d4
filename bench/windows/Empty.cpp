// A window with the processes in a list and nothing else: what the system alone takes.
// clang-format off
#include <windows.h>
#include <tlhelp32.h>
// clang-format on

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
  if (id == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, id, wParam, lParam);
}

void Fill(HWND list) {
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry))
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.szExeFile));
  CloseHandle(snapshot);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int showCommand) {
  WNDCLASSW empty{};
  empty.lpfnWndProc = Procedure;
  empty.hInstance = instance;
  empty.lpszClassName = L"Empty";
  RegisterClassW(&empty);
  const HWND window = CreateWindowW(L"Empty", L"Empty", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 486, 320,
                                    nullptr, nullptr, instance, nullptr);
  const HWND list = CreateWindowW(L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL, 0, 0, 470, 280, window, nullptr,
                                  instance, nullptr);
  Fill(list);
  ShowWindow(window, showCommand);
  UpdateWindow(window);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
