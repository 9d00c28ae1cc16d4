#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/processes/Descent.h"
#include "platform/types.h"

namespace onlinux {

// How a program is to show its window, by the numbers of the show commands.
enum class ShowState { Hidden = 0, Normal = 1, Minimized = 2, Maximized = 3 };

// A top-level window of any program.
struct SeenWindow {
  platform::WindowHandle number = 0;
  std::string title;
};

// What tells a window again where another server lists it too.
struct WindowTraits {
  std::string title;
  std::vector<std::string> names;        // of its kind: its class, or that of the program's menu entry
  std::vector<std::uint32_t> processes;  // that may have made it; empty where nobody tells
};

// Looks out for the first window of a start, and brings it into a state.
class FirstWindow {
 public:
  // What became of it: there is none, it was told what to do, or it has the state.
  enum class Stage { None, Asked, Reached };

  virtual ~FirstWindow() = default;
  // What can be read from as soon as there is news; below 0 when none can come any more.
  virtual int Line() const = 0;
  // True where there was news since the last time.
  virtual bool HasNews() = 0;
  // Looks after the window that was found, or for another where that has gone.
  virtual Stage Look() = 0;
};

// What the platform asks of a server of windows: of X, or of a Wayland compositor. The libraries that lead to them take
// longer to load than a program takes to start, so all of it stands behind libraries of the program's own.
struct WindowCalls {
  // The windows of all programs, shown or not, from front to back. Not those of this program that are no forms of its
  // and never show.
  std::vector<SeenWindow> (*Windows)();
  std::string (*TitleOf)(platform::WindowHandle window);
  bool (*Shows)(platform::WindowHandle window);
  // These are true where the server did so.
  bool (*Show)(platform::WindowHandle window, bool show);
  bool (*BringToFront)(platform::WindowHandle window);
  bool (*KeepAbove)(platform::WindowHandle window, bool above);
  // What each of some windows is told by; empty for one that another server can't list.
  std::vector<WindowTraits> (*TraitsOf)(const std::vector<SeenWindow>& windows);
  // Null where no window can be found.
  std::unique_ptr<FirstWindow> (*LookOut)(const Descent& descent, ShowState state);
};

// What can be asked of the X server alone.
struct XCalls : WindowCalls {
  bool (*HasServer)();
  bool (*Place)(platform::WindowHandle window, const std::array<int, 4>& place, std::uint32_t flags);
  bool (*SendKeys)(const std::string& keys);
};

// What is asked of a Wayland compositor alone.
struct CompositorCalls : WindowCalls {
  // True for a window that is minimized, which stands for hidden there.
  bool (*IsMinimized)(platform::WindowHandle window);
  // Why windows of others are missing in its list, as a text for the user; empty where none are.
  std::string (*WhyMissing)();
};

// The calls, each from a library that is loaded at first use. Null where the library is missing; the error output then
// says so, once. Null too where no compositor is named.
const XCalls* TheXCalls();
const CompositorCalls* TheCompositorCalls();

// The libraries, and the names under which they give their calls away.
inline constexpr const char* XCallsName = "velmaro-x11.so";
inline constexpr const char* XCallsEntry = "VelmaroXCalls";
inline constexpr const char* CompositorCallsName = "velmaro-wayland.so";
inline constexpr const char* CompositorCallsEntry = "VelmaroCompositorCalls";

// Numbers of the X server never use the three highest bits, and those of a compositor's windows begin behind them. What
// is from the third on are this program's own.
inline constexpr platform::WindowHandle FirstOfCompositor = 0x20000000;
inline constexpr platform::WindowHandle FirstOfOwn = 0x40000000;
inline bool IsOnX(platform::WindowHandle window) { return window != 0 && window < FirstOfCompositor; }
inline bool IsOfCompositor(platform::WindowHandle window) { return window >= FirstOfCompositor && window < FirstOfOwn; }

}  // namespace onlinux
