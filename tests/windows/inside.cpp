// A library that a test loads into velmaro.exe, to read there what no other program can.
#include "Inside.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

// One line for each entry: "x" where it is checked, ">" where Enter would choose it, its id and its text.
void AddMenu(HMENU menu, std::wstring& lines) {
  for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
    std::array<wchar_t, 200> text{};
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    item.dwTypeData = text.data();
    item.cch = static_cast<UINT>(text.size());
    ::GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
    lines += item.fState & MFS_CHECKED ? L'x' : L' ';
    lines += item.fState & MFS_HILITE ? L'>' : L' ';
    lines += std::to_wstring(item.hSubMenu ? 0 : item.wID) + L' ' + text.data() + L'\n';
    if (item.hSubMenu) AddMenu(item.hSubMenu, lines);
  }
}

// The menu of a form's bar, or of an open popup; of an open file dialog one line, whose id is what it was asked for.
std::wstring Menu(HWND window) {
  if (const auto* kept = static_cast<const OPENFILENAMEW* const*>(::GetPropW(window, L"FileOpenDlgInfos")))
    return L"  " + std::to_wstring((*kept)->Flags) + L" flags\n";
  std::array<wchar_t, 20> name{};
  ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  const bool popup = std::wstring(name.data()) == L"#32768";
  std::wstring lines;
  AddMenu(popup ? reinterpret_cast<HMENU>(::SendMessageW(window, MN_GETHMENU, 0, 0)) : ::GetMenu(window), lines);
  return lines;
}

BOOL WINAPI AskSystem(UINT what, UINT size, void* data, UINT flags) {
  if (what != SPI_GETHIGHCONTRAST) return ::SystemParametersInfoW(what, size, data, flags);
  static_cast<HIGHCONTRASTW*>(data)->dwFlags = HCF_HIGHCONTRASTON;
  return TRUE;
}

// Takes the place of the system's function among those that the program imports.
void TellHighContrast() {
  auto* const program = reinterpret_cast<BYTE*>(::GetModuleHandleW(nullptr));
  const auto& header =
      *reinterpret_cast<IMAGE_NT_HEADERS*>(program + reinterpret_cast<IMAGE_DOS_HEADER*>(program)->e_lfanew);
  const auto& table = header.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
  auto* const imports = reinterpret_cast<FARPROC*>(program + table.VirtualAddress);
  const auto asked = ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "SystemParametersInfoW");
  DWORD before = 0;
  ::VirtualProtect(imports, table.Size, PAGE_READWRITE, &before);  // some linkers let nobody write there
  std::replace(imports, imports + table.Size / sizeof *imports, asked,
               reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&AskSystem)));
  HMODULE stays = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"inside.dll", &stays);
}

}  // namespace

// A hook on the thread of the window that is asked about: there, no handler is half through its work.
extern "C" __declspec(dllexport) LRESULT CALLBACK Answer(int code, WPARAM wParam, LPARAM lParam) {
  const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && message.message == ::RegisterWindowMessageW(drive::MenuQuestion)) {
    const auto memory = ::OpenFileMappingW(FILE_MAP_WRITE, FALSE, drive::MenuQuestion);
    if (auto* answer = static_cast<drive::MenuAnswer*>(::MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, 0))) {
      ::lstrcpynW(*answer, Menu(message.hwnd).c_str(), static_cast<int>(std::size(*answer)));
      ::UnmapViewOfFile(answer);
    }
    ::CloseHandle(memory);
  }
  if (code == HC_ACTION && message.message == ::RegisterWindowMessageW(drive::HighContrast)) TellHighContrast();
  return ::CallNextHookEx(nullptr, code, wParam, lParam);
}
