#include <sstream>
#include <stdexcept>

#include "Drive.h"

namespace drive {
namespace {

constexpr auto Title = L"Zeld's Velmaro Process";

std::wstring WithoutMarks(std::wstring text) {
  std::erase(text, L'&');
  return text.substr(0, text.find(L'\t'));
}

void SendInside(HWND window, const wchar_t* message) {
  // Without it most tests would wait in vain, so its lack ends them at once.
  static const auto library = ::LoadLibraryW(Beside(L"inside.dll").c_str());
  if (!library) throw std::runtime_error("inside.dll could not be loaded");
  const auto inside = reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(::GetProcAddress(library, "Answer")));
  // The system loads the library into the program when it first runs the hook there.
  const auto hook = ::SetWindowsHookExW(WH_CALLWNDPROC, inside, library, ::GetWindowThreadProcessId(window, nullptr));
  ::SendMessageW(window, ::RegisterWindowMessageW(message), 0, 0);
  ::UnhookWindowsHookEx(hook);
}

std::wstring MenuLines(HWND window) {
  const OwnedHandle memory(
      ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(MenuAnswer), MenuQuestion));
  auto* const answer = static_cast<MenuAnswer*>(::MapViewOfFile(memory.get(), FILE_MAP_WRITE, 0, 0, 0));
  SendInside(window, MenuQuestion);
  std::wstring text = *answer;
  ::UnmapViewOfFile(answer);
  if (text.empty() && ::IsWindow(window)) throw std::runtime_error("inside.dll did not answer in velmaro.exe");
  return text;
}

}  // namespace

void Box::Answer(int button) const {
  auto control = ::GetDlgItem(window, button);
  // A box with nothing but OK gives it another id on some systems.
  if (!control && button == IDOK) control = ::GetDlgItem(window, IDCANCEL);
  Press(control);
  EXPECT_TRUE(Gone(window)) << "the box stays open";
}

HWND Velmaro::Main() const {
  if (!main_) main_ = Window(Title);
  if (!main_) throw std::runtime_error("velmaro.exe shows no window");
  return main_;
}

HWND Velmaro::Form() const {
  HWND form = nullptr;
  Until([&] {
    for (const auto window : Windows())
      if (!form && window != Main() && drive::ClassOf(window) == L"Velmaro.Form") form = window;
    return form != nullptr;
  });
  return form;
}

std::vector<std::wstring> Velmaro::Rows() const {
  const auto list = List();
  std::vector<std::wstring> rows;
  const auto count = ::SendMessageW(list, LB_GETCOUNT, 0, 0);
  for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
    // The program may fill the list anew meanwhile.
    std::wstring text(static_cast<std::size_t>(::SendMessageW(list, LB_GETTEXTLEN, i, 0) + 1000), L'\0');
    const auto length = ::SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
    rows.push_back(text.substr(0, static_cast<std::size_t>(std::max<LRESULT>(0, length))));
  }
  return rows;
}

std::wstring Velmaro::Row(const std::wstring& ending) const {
  for (const auto& row : Rows())
    if (row.ends_with(ending)) return row;
  return {};
}

bool Velmaro::Select(const std::wstring& ending) const {
  const auto rows = Rows();
  const auto at = std::ranges::find_if(rows, [&](const auto& row) { return row.ends_with(ending); }) - rows.begin();
  ::SendMessageW(List(), LB_SETCURSEL, static_cast<WPARAM>(at), 0);
  return Selected() == at;
}

std::vector<Entry> Velmaro::Menu(HWND window) const {
  std::vector<Entry> entries;
  std::wistringstream lines(MenuLines(window ? window : Main()));
  for (std::wstring line; std::getline(lines, line);) {
    std::size_t read = 0;
    const auto id = static_cast<UINT>(std::stoul(line.substr(3), &read));
    entries.push_back({line[0] - L'0', line[1] == L'x', line[2] == L'>', id, line.substr(3 + read + 1)});
  }
  return entries;
}

std::wstring Velmaro::Checks() const {
  std::wstring checks;
  for (const auto& entry : Menu())
    if (entry.checked) checks += (checks.empty() ? L"" : L"|") + WithoutMarks(entry.text);
  return checks;
}

void Velmaro::Choose(const std::wstring& text) const {
  for (const auto& entry : Menu())
    if (WithoutMarks(entry.text) == text) {
      ::PostMessageW(Main(), WM_COMMAND, entry.id, 0);
      return;
    }
  throw std::runtime_error("there is no such entry");
}

void Velmaro::TellHighContrast() const {
  SendInside(Main(), HighContrast);
  ::SendMessageW(Main(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
}

Box Velmaro::Await() const {
  Box box;
  box.window = Window({}, L"#32770");
  if (!box.window) return box;
  box.title = Text(box.window);
  for (HWND child = nullptr; (child = ::FindWindowExW(box.window, child, L"Static", nullptr));)
    if (const auto text = Text(child); !text.empty()) box.text = text;
  Until([&] { return (box.defaultButton = ::GetDlgCtrlID(Focus(box.window))) != 0; });
  return box;
}

}  // namespace drive
