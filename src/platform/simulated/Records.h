#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/comdlg32.h"
#include "platform/machine.h"
#include "platform/user32.h"
#include "runtime/Types.h"

namespace velmaro {
class Menu;
}

namespace simulated {

// Orders names whose case plays no part: paths, registry keys, settings.
struct CaseLess {
  bool operator()(const std::string& a, const std::string& b) const {
    return platform::LowerCase(a) < platform::LowerCase(b);
  }
};

// A running process, or one that has ended.
struct Process {
  std::string name;
  std::uint32_t id = 0;
  std::int32_t basePriority = 8;
  std::uint32_t classSet = 0;  // the class that was set last, 0 for none
  bool denied = false;         // it can't be opened
  bool stubborn = false;       // it can be opened, but neither changed nor ended
  bool alive = true;
  bool lingers = false;  // it was ended, and snapshots show it until somebody waits for it
};

// A top-level window of any program.
struct Window {
  platform::WindowHandle handle = 0;
  std::string title;
  bool visible = true;
  bool topmost = false;
  std::string remark = {};  // what is said of it behind its title
  bool outOfReach = false;  // for programs that are to place it
};

// One call of SetWindowPos.
struct Placing {
  platform::WindowHandle window = 0;
  std::int32_t insertAfter = 0;
  int x = 0, y = 0, width = 0, height = 0;
  std::uint32_t flags = 0;
  bool operator==(const Placing&) const = default;
};

// A file or folder of the disk.
struct File {
  std::string bytes = {};
  bool locked = false;  // another program holds it, for good or until a moment
  std::uint64_t lockedUntil = 0;
  bool folder = false;                       // it is a folder
  std::size_t readable = std::string::npos;  // the bytes from its start that can be read
  bool readOnly = false;                     // it is marked so
};

// A value of the registry: its type (1 text) and its bytes, a final NUL included.
struct RegistryValue {
  std::uint32_t type = 1;
  std::string bytes = {};
};

// One program start: which call made it and what it was told. A part that the call does not have stays empty.
struct Start {
  std::string call;  // "ShellExecuteA", "WinExec" or "Shell"
  std::string file;  // the file or the command line
  int show = 0;      // the show command or window style
  std::string folder = {};
  std::string parameters = {};
  std::string verb = {};
  platform::WindowHandle owner = 0;
};

// Keys that were sent, and the title of the window that got them, empty for none.
struct SentKeys {
  std::string keys;
  std::string window;
};

// A message box that was shown, and what it was answered.
struct Box {
  std::string text;
  std::string title;
  std::uint32_t flags = 0;
  int answer = 0;
};

// A popup that was opened: what it held checked, and where.
struct Popup {
  velmaro::Menu* menu = nullptr;
  std::optional<velmaro::Bounds> place;
  velmaro::Menu* defaultEntry = nullptr;
  std::vector<velmaro::Menu*> checked;
};

// A living tooltip window as the messages left it.
struct Tooltip {
  std::uint32_t style = 0;
  platform::WindowHandle owner = 0;
  bool topmost = false;
  std::optional<platform::TOOLINFO> tool = {};
  std::string title = {};
  std::uint32_t icon = 0;
  std::optional<std::uint32_t> backColor = {};
  std::optional<std::uint32_t> textColor = {};
};

// Physical memory and the blocks that the program claimed of it.
struct Memory {
  static constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();
  std::uint64_t total = 512U << 20;
  std::uint64_t available = 256U << 20;  // other programs' pages go out where a block is larger
  std::size_t failEvery = 0;             // each claim with a number divisible by it fails
  std::size_t claims = 0;                // asked for, with the failed ones
  std::size_t liveBytes = 0;
  std::size_t peakBytes = 0;
  std::size_t peakBlocks = 0;
  std::map<void*, std::size_t> live;  // the blocks that were not given back
  std::vector<void*> released;        // the blocks that were, in the order of their going
};

}  // namespace simulated
