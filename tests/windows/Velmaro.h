#pragma once

#include <algorithm>

#include "System.h"

// Drives the real velmaro.exe as a user does, from outside, and reads what shows.
namespace drive {

struct Box {
  HWND window = nullptr;
  std::wstring title;
  std::wstring text;
  int defaultButton = 0;
  void Answer(int button) const {
    auto control = ::GetDlgItem(window, button);
    // A box with nothing but OK gives it another id on some systems.
    if (!control && button == IDOK) control = ::GetDlgItem(window, IDCANCEL);
    Press(control);
    EXPECT_TRUE(Gone(window)) << "the box stays open";
  }
};

struct Entry {
  bool checked = false;
  bool marked = false;
  UINT id = 0;
  std::wstring text;
  std::wstring Name() const {
    auto name = text.substr(0, text.find(L'\t'));
    std::erase(name, L'&');
    return name;
  }
};

inline void SendInside(HWND window, const wchar_t* message) {
  // Without it most tests would wait in vain, so its lack ends them at once.
  static const auto library = ::LoadLibraryW(Beside(L"inside.dll").c_str());
  if (!library) throw std::runtime_error("inside.dll could not be loaded");
  const auto inside = reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(::GetProcAddress(library, "Answer")));
  // The system loads the library into the program when it first runs the hook there.
  const auto hook = ::SetWindowsHookExW(WH_CALLWNDPROC, inside, library, ::GetWindowThreadProcessId(window, nullptr));
  ::SendMessageW(window, ::RegisterWindowMessageW(message), 0, 0);
  ::UnhookWindowsHookEx(hook);
}

inline std::wstring MenuLines(HWND window) {
  const OwnedHandle memory(
      ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(MenuAnswer), MenuQuestion));
  auto* const answer = static_cast<MenuAnswer*>(::MapViewOfFile(memory.get(), FILE_MAP_WRITE, 0, 0, 0));
  SendInside(window, MenuQuestion);
  std::wstring text = *answer;
  ::UnmapViewOfFile(answer);
  if (text.empty() && ::IsWindow(window)) throw std::runtime_error("inside.dll did not answer in velmaro.exe");
  return text;
}

class Velmaro : public Program {
 public:
  explicit Velmaro(const Folder& folder, const std::wstring& line = {}) : Program(folder.Path(L"velmaro.exe"), line) {}
  HWND Main() const {
    if (!main_) main_ = Window(L"Zeld's Velmaro Process");
    if (!main_) throw std::runtime_error("velmaro.exe shows no window");
    return main_;
  }
  // Waits for another form than the main one.
  HWND Form() const {
    return Window([&](HWND window) { return window != Main() && drive::ClassOf(window) == L"Velmaro.Form"; });
  }
  HWND List() const { return Child(Main(), L"LISTBOX"); }
  std::vector<std::wstring> Rows() const {
    std::vector<std::wstring> rows;
    const auto list = List();
    const auto count = ::SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
      // The program may fill the list anew meanwhile.
      std::wstring text(static_cast<std::size_t>(::SendMessageW(list, LB_GETTEXTLEN, i, 0) + 1000), L'\0');
      const auto length = ::SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
      rows.push_back(text.substr(0, static_cast<std::size_t>(std::max<LRESULT>(0, length))));
    }
    return rows;
  }
  std::wstring Row(const std::wstring& ending) const {
    for (const auto& row : Rows())
      if (row.ends_with(ending)) return row;
    return {};
  }
  int Selected() const { return static_cast<int>(::SendMessageW(List(), LB_GETCURSEL, 0, 0)); }
  bool Select(const std::wstring& ending) const {
    const auto rows = Rows();
    const auto at = std::ranges::find_if(rows, [&](const auto& row) { return row.ends_with(ending); }) - rows.begin();
    ::SendMessageW(List(), LB_SETCURSEL, static_cast<WPARAM>(at), 0);
    return Selected() == at;
  }
  void Press(const std::wstring& caption) const { drive::Press(Child(Main(), L"BUTTON", caption)); }
  void Refresh() const { ::SendMessageW(Child(Main(), L"BUTTON", L"&Refresh"), BM_CLICK, 0, 0); }
  std::vector<Entry> Menu(HWND window = nullptr) const {
    std::vector<Entry> entries;
    std::wistringstream lines(MenuLines(window ? window : Main()));
    for (std::wstring line; std::getline(lines, line);) {
      std::size_t read = 0;
      const auto id = static_cast<UINT>(std::stoul(line.substr(2), &read));
      entries.push_back({line[0] == L'x', line[1] == L'>', id, line.substr(2 + read + 1)});
    }
    return entries;
  }
  std::wstring Checks() const {
    std::wstring checks;
    for (const auto& entry : Menu())
      if (entry.checked) checks += (checks.empty() ? L"" : L"|") + entry.Name();
    return checks;
  }
  // Chooses an entry of the menu bar by its text without its shortcut. Does not wait for what it does.
  void Choose(const std::wstring& text) const {
    const auto entries = Menu();
    const auto at = std::ranges::find(entries, text, &Entry::Name);
    if (at == entries.end()) throw std::runtime_error("there is no such entry");
    ::PostMessageW(Main(), WM_COMMAND, at->id, 0);
  }
  void TellHighContrast() const {
    SendInside(Main(), HighContrast);
    ::SendMessageW(Main(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
  }
  HWND Popup() const { return WindowOf(L"#32768"); }
  Box Await() const {
    Box box;
    box.window = WindowOf(L"#32770");
    if (!box.window) return box;
    box.title = Text(box.window);
    for (HWND child = nullptr; (child = ::FindWindowExW(box.window, child, L"Static", nullptr));)
      if (const auto text = Text(child); !text.empty()) box.text = text;
    Until([&] { return (box.defaultButton = ::GetDlgCtrlID(Focus(box.window))) != 0; });
    return box;
  }

 private:
  mutable HWND main_ = nullptr;
};

}  // namespace drive

using namespace drive;
