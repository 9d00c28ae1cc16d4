#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Inside.h"

// Drives the real velmaro.exe as a user does, from outside, and reads what shows.
namespace drive {

inline constexpr int LongEnough = 30000;
bool Until(const std::function<bool()>& holds, int milliseconds = LongEnough);

struct CloseNativeHandle {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, CloseNativeHandle>;

std::wstring Beside(const std::wstring& name);

// A folder of a test's own, with velmaro.exe in it. When it ends, every program that runs from it ends with it.
class Folder {
 public:
  Folder();
  Folder& operator=(Folder&&) = delete;
  ~Folder();
  std::wstring Path(const std::wstring& name) const { return (path_ / name).wstring(); }
  std::wstring Probe(const std::wstring& name) const;
  void Write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::wstring& name) const;

 private:
  std::filesystem::path path_;
};

// One running process as the system tells it: nothing here comes from the program under test.
struct Process {
  DWORD id = 0;
  std::wstring name;
};
std::vector<Process> Processes();
DWORD ClassOf(DWORD process);
void SetClass(DWORD process, DWORD priorityClass);
void End(DWORD process);
// Memory that belongs to a process alone, in bytes, and the handles that it holds.
std::size_t PrivateBytes(DWORD process);
DWORD Handles(DWORD process);

// A program that was started with exactly this command line behind its name. It ends with the object.
class Program {
 public:
  explicit Program(const std::wstring& path, const std::wstring& line = {});
  Program(Program&&) = default;
  ~Program();
  DWORD Id() const { return id_; }
  bool Lives() const { return ::WaitForSingleObject(handle_.get(), 0) == WAIT_TIMEOUT; }
  int ExitCode(int milliseconds = LongEnough) const;
  void Hang() const { ::SuspendThread(thread_.get()); }
  void GoOn() const { ::ResumeThread(thread_.get()); }
  std::vector<HWND> Windows(bool visible = true) const;
  // Waits for a visible window by its title, or by its class where that is given; null when none comes.
  HWND Window(const std::wstring& title, const std::wstring& windowClass = {}) const;

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
Report ReportOf(const std::wstring& probe);
Program StartProbe(const std::wstring& probe, const std::wstring& line = {});

std::wstring Text(HWND window);
std::wstring ClassOf(HWND window);
std::vector<HWND> Children(HWND parent);
// The first of them of a class whose text begins with a text.
HWND Child(HWND parent, const std::wstring& windowClass, const std::wstring& text = {});
// The colours that a part of the screen shows, with how often each comes there: red in the highest of three bytes.
std::map<DWORD, int> Shown(const RECT& place);
HWND Focus(HWND window);
inline bool Gone(HWND window) {
  return Until([&] { return !::IsWindowVisible(window); });
}
void Press(HWND button);
// Brings a window to the front and waits until the keyboard is its own.
void Front(HWND window);
// Types real keys into the window in front, one after the other; `with` is held meanwhile.
void Keys(std::initializer_list<int> keys, int with = 0);
// Presses and releases a real mouse button on a point of a window: at its middle where none is given.
void Click(HWND window, DWORD down = MOUSEEVENTF_LEFTDOWN, int times = 1, std::optional<POINT> at = {});
void ClickRow(HWND list, int row, DWORD down = MOUSEEVENTF_LEFTDOWN, int times = 1);

struct Box {
  HWND window = nullptr;
  std::wstring title;
  std::wstring text;
  int defaultButton = 0;
  void Answer(int button) const;
};

struct Entry {
  int depth = 0;
  bool checked = false;
  bool marked = false;
  UINT id = 0;
  std::wstring text;
};

class Velmaro : public Program {
 public:
  explicit Velmaro(const Folder& folder, const std::wstring& line = {}) : Program(folder.Path(L"velmaro.exe"), line) {}
  HWND Main() const;
  HWND Form() const;
  HWND List() const { return Child(Main(), L"LISTBOX"); }
  std::vector<std::wstring> Rows() const;
  std::wstring Row(const std::wstring& ending) const;
  int Selected() const { return static_cast<int>(::SendMessageW(List(), LB_GETCURSEL, 0, 0)); }
  bool Select(const std::wstring& ending) const;
  void Press(const std::wstring& caption) const { drive::Press(Child(Main(), L"BUTTON", caption)); }
  void Refresh() const { ::SendMessageW(Child(Main(), L"BUTTON", L"&Refresh"), BM_CLICK, 0, 0); }

  std::vector<Entry> Menu(HWND window = nullptr) const;
  std::wstring Checks() const;
  // Chooses an entry of the menu bar by its text without its shortcut. Does not wait for what it does.
  void Choose(const std::wstring& text) const;
  void TellHighContrast() const;
  HWND Popup() const { return Window({}, L"#32768"); }
  Box Await() const;

 private:
  mutable HWND main_ = nullptr;
};

// The settings of the program, of which none stand there at first.
class Settings {
 public:
  Settings();
  std::wstring Read(const std::wstring& key) const;
  void Write(const std::wstring& key, const std::wstring& value) const;
};

}  // namespace drive

using namespace drive;
